#include "platform/Dialogs_win32.h"

#include <commctrl.h>
#include <shobjidl.h>

#include <algorithm>
#include <vector>

#include "platform/ComPtr_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr const wchar_t* kProgramName = L"Tobbin";

UINT ButtonFlags(Buttons buttons) {
    switch (buttons) {
        case Buttons::YesNo:
            return MB_YESNO;
        case Buttons::YesNoPreferNo:
            return MB_YESNO | MB_DEFBUTTON2;
        case Buttons::YesNoCancel:
            return MB_YESNOCANCEL;
        default:
            return MB_OK;
    }
}

UINT IconFlags(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Information:
            return MB_ICONINFORMATION;
        case BoxIcon::Question:
            return MB_ICONQUESTION;
        case BoxIcon::Warning:
            return MB_ICONWARNING;
        case BoxIcon::Stop:
            return MB_ICONSTOP;
        default:
            return 0;
    }
}

Answer AnswerOf(int button) {
    switch (button) {
        case IDYES:
            return Answer::Yes;
        case IDNO:
            return Answer::No;
        case IDOK:
            return Answer::Ok;
        default:  // "Cancel", or a box that could not be shown
            return Answer::Cancel;
    }
}

// The captions and patterns of a filter, alternating.
std::vector<std::wstring> FilterTexts(const std::string& filter) {
    std::vector<std::wstring> texts;
    for (std::size_t begin = 0; begin <= filter.size();) {
        const std::size_t end = std::min(filter.find('|', begin), filter.size());
        texts.push_back(Wide(std::string_view(filter).substr(begin, end - begin)));
        begin = end + 1;
    }
    if (texts.size() % 2 != 0)
        texts.pop_back();
    return texts;
}

void SetFilter(IFileDialog& dialog, const std::vector<std::wstring>& texts) {
    std::vector<COMDLG_FILTERSPEC> types;
    for (std::size_t i = 0; i + 1 < texts.size(); i += 2)
        types.push_back({texts[i].c_str(), texts[i + 1].c_str()});
    if (!types.empty())
        dialog.SetFileTypes(static_cast<UINT>(types.size()), types.data());
}

void SetFolder(IFileDialog& dialog, const std::string& folder) {
    void* item = nullptr;
    if (FAILED(SHCreateItemFromParsingName(Wide(folder).c_str(), nullptr, __uuidof(IShellItem),
                                           &item)))
        return;
    const ComPtr<IShellItem> owned(static_cast<IShellItem*>(item));
    dialog.SetFolder(owned.get());
}

std::optional<std::string> MaybeResult(IFileDialog& dialog) {
    IShellItem* item = nullptr;
    if (FAILED(dialog.GetResult(&item)))
        return std::nullopt;
    const ComPtr<IShellItem> owned(item);
    wchar_t* path = nullptr;
    if (FAILED(owned->GetDisplayName(SIGDN_FILESYSPATH, &path)))
        return std::nullopt;
    const ComText text(path);
    return Utf8(text.get());
}

std::optional<std::string> MaybeShow(IFileDialog* dialog, HWND owner, DWORD options,
                                     const std::string& filter, const std::string& folder) {
    if (dialog == nullptr)
        return std::nullopt;
    const std::vector<std::wstring> texts = FilterTexts(filter);
    SetFilter(*dialog, texts);
    SetFolder(*dialog, folder);
    dialog->SetOptions(FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR | FOS_PATHMUSTEXIST | options);
    if (FAILED(dialog->Show(owner)))  // canceled
        return std::nullopt;
    return MaybeResult(*dialog);
}

}  // namespace

HWND SystemDialogs::Owner() const {
    const HWND active = GetActiveWindow();
    return active != nullptr ? active : GetLastActivePopup(m_mainWindow);
}

Answer SystemDialogs::Ask(const std::string& text, Buttons buttons, BoxIcon icon,
                          const std::string& title) {
    const HWND owner = Owner();
    UINT flags = ButtonFlags(buttons) | IconFlags(icon);
    if (owner == nullptr)
        flags |= MB_TASKMODAL | MB_SETFOREGROUND;
    if (buttons != Buttons::Ok && icon == BoxIcon::Warning)
        flags |= MB_DEFBUTTON2;
    const std::wstring caption = title.empty() ? kProgramName : WideShown(title);
    return AnswerOf(
        MessageBoxW(owner, WideShown(text, ShownIn::Box).c_str(), caption.c_str(), flags));
}

bool SystemDialogs::TellWithTick(const std::string& text, const std::string& tick) {
    const std::wstring content = Wide(text), toTick = Wide(tick);
    TASKDIALOGCONFIG config = {};
    config.cbSize = sizeof(config);
    config.hwndParent = Owner();
    config.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION | TDF_SIZE_TO_CONTENT;
    config.dwCommonButtons = TDCBF_OK_BUTTON;
    config.pszWindowTitle = kProgramName;
    config.pszContent = content.c_str();
    config.pszVerificationText = toTick.c_str();
    BOOL isTicked = FALSE;
    if (FAILED(TaskDialogIndirect(&config, nullptr, nullptr, &isTicked)))
        Tell(text);
    return isTicked != FALSE;
}

std::optional<std::string> SystemDialogs::MaybeFileToOpen(const std::string& filter,
                                                          const std::string& folder) {
    const auto dialog = MaybeCreate<IFileOpenDialog>(CLSID_FileOpenDialog);
    return MaybeShow(dialog.get(), Owner(), FOS_FILEMUSTEXIST, filter, folder);
}

std::optional<std::string> SystemDialogs::MaybeFileToSave(const std::string& filter,
                                                          const std::string& folder) {
    const auto dialog = MaybeCreate<IFileSaveDialog>(CLSID_FileSaveDialog);
    return MaybeShow(dialog.get(), Owner(), FOS_NOREADONLYRETURN, filter, folder);
}

}  // namespace tobbin

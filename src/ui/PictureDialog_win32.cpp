#include "ui/PictureDialog_win32.h"

#include "platform/Twips_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

constexpr UINT kReady = WM_APP;
constexpr int kTextMargin = 8;  // pixels at 96 to the inch

}  // namespace

void PictureDialog::Show(HWND owner) {
    RegisterDialogClass(L"frmPicture");
    ShowModal(owner, IDD_PICTURE);
}

INT_PTR PictureDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            m_choice.Load(*this);
            SetFocus(Item(IDC_PICTURE_BROWSE));
            return FALSE;  // the focus is set
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_PICTURE_BROWSE) {
                m_choice.OnBrowse(*this);
                return TRUE;
            }
            if (LOWORD(wParam) == IDC_PICTURE_TILE) {
                RequestPreview();
                return TRUE;
            }
            if (LOWORD(wParam) == IDOK)
                m_choice.OnOk(*this);
            else if (LOWORD(wParam) == IDCANCEL)
                m_choice.OnCancel();
            break;
        case WM_DRAWITEM:
            DrawPreview(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case kReady:
            if (auto picture = m_loader.MaybeTake(this); picture != nullptr) {
                m_preview = std::move(picture);
                InvalidateRect(Item(IDC_PICTURE_PREVIEW), nullptr, FALSE);
            }
            return TRUE;
        default:
            break;
    }
    return DialogBase::HandleMessage(message, wParam, lParam);
}

void PictureDialog::TickTile(bool ticked) {
    CheckDlgButton(Handle(), IDC_PICTURE_TILE, ticked ? BST_CHECKED : BST_UNCHECKED);
}

void PictureDialog::TickPicture(bool ticked) {
    CheckDlgButton(Handle(), IDC_PICTURE_SHOW, ticked ? BST_CHECKED : BST_UNCHECKED);
}

bool PictureDialog::IsTileTicked() const {
    return IsDlgButtonChecked(Handle(), IDC_PICTURE_TILE) == BST_CHECKED;
}

bool PictureDialog::IsPictureTicked() const {
    return IsDlgButtonChecked(Handle(), IDC_PICTURE_SHOW) == BST_CHECKED;
}

void PictureDialog::ShowPath(const std::string& path) {
    m_path = path;
    SetDlgItemTextW(Handle(), IDC_PICTURE_PATH, Wide(path).c_str());
    RequestPreview();
}

void PictureDialog::RequestPreview() {
    if (m_path.empty())
        return;
    RECT place = {};
    GetClientRect(Item(IDC_PICTURE_PREVIEW), &place);
    PictureRequest request;
    request.path = m_path;
    request.pane = {static_cast<int>(place.right), static_cast<int>(place.bottom)};
    request.tiled = IsTileTicked();
    m_loader.Want(this, request, [dialog = Handle()] { PostMessageW(dialog, kReady, 0, 0); });
}

// The picture as it will be, or why there is none.
void PictureDialog::DrawPreview(const DRAWITEMSTRUCT& draw) const {
    RECT place = draw.rcItem;
    if (m_preview == nullptr || !m_preview->problem.empty()) {
        FillRect(draw.hDC, &place, GetSysColorBrush(COLOR_WINDOW));
        const std::string text = m_path.empty() ? "No picture is chosen yet."
                                 : m_preview != nullptr
                                     ? "This picture can't be shown: " + m_preview->problem + "."
                                     : std::string();
        const int margin = ScalePixels(kTextMargin, Handle());
        RECT inside = place;
        InflateRect(&inside, -margin, -margin);
        SetTextColor(draw.hDC, GetSysColor(COLOR_WINDOWTEXT));
        SetBkMode(draw.hDC, TRANSPARENT);
        DrawTextW(draw.hDC, Wide(text).c_str(), -1, &inside, DT_WORDBREAK | DT_NOPREFIX);
    } else {
        const PicturePixels& pixels = m_preview->pixels;
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = pixels.size.width;
        info.bmiHeader.biHeight = -pixels.size.height;  // from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        SetDIBitsToDevice(draw.hDC, 0, 0, static_cast<DWORD>(pixels.size.width),
                          static_cast<DWORD>(pixels.size.height), 0, 0, 0,
                          static_cast<UINT>(pixels.size.height), pixels.pixels.data(), &info,
                          DIB_RGB_COLORS);
    }
    FrameRect(draw.hDC, &place, GetSysColorBrush(COLOR_3DSHADOW));
}

}  // namespace tobbin

#include "ui/PictureDialog_win32.h"

#include "platform/Dpi_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/PicturePixels_win32.h"

namespace tobbin {
namespace {

constexpr UINT kReady = WM_APP;
constexpr int kTextMargin = 8;  // pixels at 96 to the inch

}  // namespace

void PictureDialog::Show(HWND owner) {
    RegisterDialogClass(L"frmPicture");
    ShowModal(owner, IDD_PICTURE);
}

LRESULT PictureDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_DRAWITEM:
            DrawPreview(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case kReady:
            OnReady();
            return TRUE;
        default:
            return DialogBase::HandleMessage(message, wParam, lParam);
    }
}

HWND PictureDialog::OnLoad() {
    m_choice.Load(*this);
    return Item(IDC_PICTURE_BROWSE);
}

bool PictureDialog::OnCommand(int control, int notification) {
    if (control == IDC_PICTURE_BROWSE)
        m_choice.OnBrowse(*this);
    else if (control == IDC_PICTURE_TILE)
        RequestPreview();
    else if (control == IDOK)
        m_choice.OnOk(*this);
    else if (control == IDCANCEL)
        m_choice.OnCancel();
    return DialogBase::OnCommand(control, notification);
}

void PictureDialog::OnReady() {
    auto picture = m_loader.MaybeTake(this);
    if (picture == nullptr)
        return;
    m_preview = std::move(picture);
    InvalidateRect(Item(IDC_PICTURE_PREVIEW), nullptr, FALSE);
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
    SetDlgItemTextW(Handle(), IDC_PICTURE_PATH, WideShown(path).c_str());
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
        DrawTextW(draw.hDC, WideShown(text).c_str(), -1, &inside, DT_WORDBREAK | DT_NOPREFIX);
    } else {
        const PicturePixels& pixels = m_preview->pixels;
        const BITMAPINFO info = LayoutOf(pixels);
        // Another size than the preview's only after a move to a screen of another density.
        StretchDIBits(draw.hDC, 0, 0, place.right, place.bottom, 0, 0, pixels.size.width,
                      pixels.size.height, pixels.pixels.data(), &info, DIB_RGB_COLORS, SRCCOPY);
    }
    FrameRect(draw.hDC, &place, GetSysColorBrush(COLOR_3DSHADOW));
}

}  // namespace tobbin

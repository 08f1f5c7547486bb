#include <algorithm>
#include <iterator>
#include <string>

#include "platform/Dpi_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "ui/ListPane_win32.h"

// The columns of the song list and their headings.

namespace tobbin {
namespace {

constexpr int kSmallestNameWidth = 120;  // pixels at 96 to the inch
constexpr int kNumberMargin = 16;        // beside a number

}  // namespace

void ListPane::SetColumns(const std::vector<std::string>& headings) {
    if (m_handle == nullptr)
        return;
    const int count = static_cast<int>(headings.size());
    for (int i = 0; i < count; ++i) {
        std::wstring text = WideShown(headings[static_cast<std::size_t>(i)]);
        LVCOLUMNW column = {};
        const bool isNumber = i > 0 && i == count - 1;
        column.mask = LVCF_TEXT | LVCF_FMT;
        column.fmt = isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.pszText = text.data();
        if (i < m_columns) {
            SendMessageW(m_handle, LVM_SETCOLUMNW, static_cast<WPARAM>(i),
                         reinterpret_cast<LPARAM>(&column));
            continue;
        }
        column.mask |= LVCF_WIDTH | LVCF_SUBITEM;
        column.cx = isNumber ? NumberWidth(text) : ScalePixels(kSmallestNameWidth, m_handle);
        column.iSubItem = i;
        SendMessageW(m_handle, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
    }
    while (m_columns > count)
        ListView_DeleteColumn(m_handle, --m_columns);
    m_columns = count;
}

int ListPane::NumberWidth(const std::wstring& heading) const {
    const std::wstring number = std::to_wstring(m_delegate.LargestNumber());
    return std::max(ListView_GetStringWidth(m_handle, heading.c_str()),
                    ListView_GetStringWidth(m_handle, number.c_str())) +
           ScalePixels(kNumberMargin, m_handle);
}

void ListPane::ShowArrow(int direction) {
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    const HWND heading = ListView_GetHeader(m_handle);
    if (!SendMessageW(heading, HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)))
        return;
    item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
    item.fmt |= direction > 0 ? HDF_SORTUP : direction < 0 ? HDF_SORTDOWN : 0;
    SendMessageW(heading, HDM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void ListPane::SetColumnWidths(const std::vector<int>& widths) {
    for (std::size_t i = 0; i < widths.size() && static_cast<int>(i) < m_columns; ++i)
        if (widths[i] > 0)
            ListView_SetColumnWidth(m_handle, static_cast<int>(i),
                                    ScalePixels(widths[i], m_handle));
}

std::vector<int> ListPane::ColumnWidths() const {
    std::vector<int> widths;
    const int dpi = static_cast<int>(GetDpiForWindow(m_handle));
    for (int i = 0; i < m_columns; ++i)
        widths.push_back(MulDiv(ListView_GetColumnWidth(m_handle, i), 96, dpi));
    return widths;
}

void ListPane::FitColumns() {
    wchar_t heading[32] = L"";
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT;
    column.pszText = heading;
    column.cchTextMax = static_cast<int>(std::size(heading));
    if (m_columns > 1 && SendMessageW(m_handle, LVM_GETCOLUMNW, static_cast<WPARAM>(m_columns - 1),
                                      reinterpret_cast<LPARAM>(&column)))
        ListView_SetColumnWidth(m_handle, m_columns - 1, NumberWidth(heading));
    RECT window;
    GetWindowRect(m_handle, &window);
    const auto dpi = GetDpiForWindow(m_handle);
    int left = window.right - window.left - GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) -
               2 * GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    for (int i = 1; i < m_columns; ++i)
        left -= ListView_GetColumnWidth(m_handle, i);
    ListView_SetColumnWidth(m_handle, 0, std::max(left, ScalePixels(kSmallestNameWidth, m_handle)));
}

}  // namespace tobbin

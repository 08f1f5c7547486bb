#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>

namespace tobbin {

// A line between two rows of a list view, where what is dragged will go. Gap k is the place before
// row k, counted from 0; the last one is behind all rows.
class InsertMark {
 public:
    void Attach(HWND list) { m_list = list; }

    // The gap that is nearest to a point of the screen.
    std::size_t GapAt(POINT screen) const;
    // Shows the line there, or nowhere.
    void Show(std::optional<std::size_t> maybeGap);
    bool IsShown() const { return m_maybeGap.has_value(); }
    // Paints the line above the rows; the list's owner calls it when the list has drawn itself.
    void Paint(HDC dc) const;

 private:
    RECT Place(std::size_t gap) const;

    HWND m_list = nullptr;
    std::optional<std::size_t> m_maybeGap;
};

}  // namespace tobbin

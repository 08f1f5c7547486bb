#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "jukebox/Jukebox.h"

namespace tobbin {

// A pane of the jukebox window; the numbers are those of `ActOnPopUpClick`.
enum class Pane : int { None = 0, Tree = 1, List = 2 };

// What the jukebox window's controller needs of what is on the screen. The view follows the
// jukebox's own signals by itself. Rows count from 0.
class JukeboxView {
 public:
    virtual ~JukeboxView() = default;

    // Selects a folder, opens the folders above it, and shows its songs; null selects none.
    virtual void SelectFolder(Folder* folder) = 0;

    // Opens or closes a folder's children.
    virtual void ExpandFolder(Folder& folder, bool open) = 0;
    virtual void EditFolderText(Folder& folder) = 0;

    // The selected rows of the list pane, ascending.
    virtual std::vector<std::size_t> SelectedRows() const = 0;
    virtual std::size_t SelectedCount() const = 0;
    // Exactly these; the first one gets the focus.
    virtual void SelectRows(const std::vector<std::size_t>& rows) = 0;
    // The row that the keys start from; selected or not.
    virtual std::optional<std::size_t> MaybeFocusedRow() const = 0;
    virtual void FocusRow(std::size_t row) = 0;
    virtual void MakeRowVisible(std::size_t row) = 0;
    // Gives the keyboard to the list: now, or when the dialog that has it goes.
    virtual void FocusList() = 0;

    // Shows a picture behind the list pane; see BackgroundPicture::Show.
    virtual void SetBackground(const std::string& address, bool tiled, const std::string& next) = 0;

    // Brings the window forward; closes it as the person does, with the question whether to save.
    virtual void Activate() = 0;
    virtual void Close() = 0;
    virtual bool IsVisible() const = 0;
};

}  // namespace tobbin

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/JukeboxWindow.h"

namespace tobbin {

// A jukebox window without a window: holds the selected rows that the test laid in it.
class FakeJukeboxView : public JukeboxView {
 public:
    std::vector<std::size_t> rows;
    std::optional<std::size_t> focusedRow;
    Folder* edited = nullptr;
    bool visible = true;
    bool closed = false;
    bool active = false;
    JukeboxWindow* controller = nullptr;

    // As a real tree does, tells nothing when the folder is selected already.
    void SelectFolder(Folder* folder) override {
        if (folder == controller->SelectedFolder())
            return;
        rows.clear();
        focusedRow.reset();
        controller->OnFolderSelected(folder);
    }
    void ExpandFolder(Folder&, bool) override {}
    void EditFolderText(Folder& folder) override { edited = &folder; }
    std::vector<std::size_t> SelectedRows() const override { return rows; }
    std::size_t SelectedCount() const override { return rows.size(); }
    void SelectRows(const std::vector<std::size_t>& selected) override {
        rows = selected;
        if (!rows.empty())
            focusedRow = rows.front();
    }
    std::optional<std::size_t> MaybeFocusedRow() const override { return focusedRow; }
    void FocusRow(std::size_t row) override { focusedRow = row; }
    void MakeRowVisible(std::size_t) override {}
    void FocusList() override { controller->CurrentPaneWFocus(Pane::List); }
    std::vector<std::string> backgrounds;  // address, "tiled" or "fitted", the next one
    void SetBackground(const std::string& address, bool tiled, const std::string& next) override {
        backgrounds.push_back(address + (tiled ? "|tiled|" : "|fitted|") + next);
    }
    void Activate() override { active = true; }
    void Close() override {
        controller->AskBeforeClosing();
        closed = true;
        visible = false;
    }
    bool IsVisible() const override { return visible; }
};

// Writes down what a jukebox window asks of the frame.
class FakeJukeboxWindowHost : public JukeboxWindowHost {
 public:
    std::vector<std::string> asked;

    void PlayAllSongsInFolder(JukeboxWindow&) override { asked.push_back("play all"); }
    void PlaySelectedSongs(JukeboxWindow&) override { asked.push_back("play selected"); }
    void ChangeBackgroundPicture(JukeboxWindow&) override { asked.push_back("picture"); }
    std::function<void(JukeboxWindow&, bool save)> prepareToClose = [this](auto&, bool save) {
        if (save)
            asked.push_back("save");
    };
    void PrepareToClose(JukeboxWindow& window, bool save) override { prepareToClose(window, save); }
    void OpenFiles(const std::vector<std::string>& paths) override {
        for (const std::string& path : paths)
            asked.push_back("open " + path);
    }
    void OnSelectionChanged(JukeboxWindow&) override {}
};

}  // namespace tobbin

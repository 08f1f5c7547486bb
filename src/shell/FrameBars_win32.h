#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/Environment.h"
#include "platform/UniqueHandle_win32.h"
#include "ui/Commands.h"

namespace tobbin {

// The toolbar `Toolbar1` of the main frame.
class FrameToolbar {
 public:
    bool Create(HWND frame);
    HWND Handle() const { return m_handle; }
    int Height() const;
    void OnDpiChanged();
    void Update(const std::function<bool(Command)>& isEnabled);

 private:
    HWND m_handle = nullptr;
    UniqueImageList m_pictures;
    UniqueFont m_font;
};

// The status bar: what the last command could not do, or the progress of long work; what the active
// jukebox holds; what is selected in it.
class FrameStatusBar {
 public:
    bool Create(HWND frame);
    HWND Handle() const { return m_handle; }
    int Height() const;
    void OnDpiChanged();
    void OnSize();

    // The bar behind the line is there only while there are steps.
    void ShowLine(const std::string& line, const StepsDone& steps);
    void ShowJukebox(const std::string& text);
    void ShowSelection(const std::string& text);

 private:
    enum Part : int { kLine, kJukebox, kSelection, kParts };
    void ShowPart(Part part, const std::string& text);
    void PlaceParts();
    int WidthOfLine() const;
    int WidthOfBar() const;

    HWND m_handle = nullptr;
    HWND m_bar = nullptr;
    UniqueFont m_font;
    std::wstring m_texts[kParts];
};

}  // namespace tobbin

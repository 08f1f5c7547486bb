#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/Environment.h"

namespace tobbin {

// The system's message boxes and file dialogs, in front of the program's active window.
class SystemDialogs : public Dialogs {
 public:
    // The window that owns them while none of the program's windows is active. Without one, as
    // during start-up, a box comes to the front by itself.
    void SetMainWindow(HWND window) { m_mainWindow = window; }

    // The first button is the default; behind a warning sign it is "No", so that a stray key does
    // no harm.
    Answer Ask(const std::string& text, Buttons buttons, BoxIcon icon,
               const std::string& title) override;

    bool TellWithTick(const std::string& text, const std::string& tick) override;

    // Neither dialog asks whether to replace an existing file or appends an extension: both are
    // the program's.
    std::optional<std::string> MaybeFileToOpen(const std::string& filter,
                                               const std::string& folder) override;
    std::optional<std::string> MaybeFileToSave(const std::string& filter,
                                               const std::string& folder) override;

 private:
    HWND Owner() const;

    HWND m_mainWindow = nullptr;
};

}  // namespace tobbin

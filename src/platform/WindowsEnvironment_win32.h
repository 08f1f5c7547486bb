#pragma once

#include "platform/Clipboard_win32.h"
#include "platform/ClockAndRandom_win32.h"
#include "platform/ComPtr_win32.h"
#include "platform/Dialogs_win32.h"
#include "platform/Disk_win32.h"
#include "platform/Drives_win32.h"
#include "platform/EventPump_win32.h"
#include "platform/GuardedDisk.h"
#include "platform/PlayerWindow_win32.h"
#include "platform/Programs_win32.h"
#include "platform/StatusLineModel.h"
#include "platform/SystemText_win32.h"
#include "platform/UserSettings_win32.h"

namespace tobbin {

// Everything outside the program, as Windows offers it. One object, made by the program's main,
// on the thread that has the windows.
class WindowsEnvironment {
 public:
    WindowsEnvironment() = default;
    WindowsEnvironment(const WindowsEnvironment&) = delete;
    WindowsEnvironment& operator=(const WindowsEnvironment&) = delete;

    // What the core gets.
    Environment& Interfaces() { return m_environment; }

    // What the windows add to it.
    SystemDialogs& Boxes() { return m_dialogs; }
    SystemEventPump& Events() { return m_events; }
    StatusLineModel& Status() { return m_statusLine; }

 private:
    OleApartment m_com;  // first, since the dialogs need it
    WindowsText m_text;
    SystemDisk m_disk;
    SystemDrives m_drives;
    RegistrySettings m_userSettings;
    KnownHosts m_hosts{m_text, m_drives, m_userSettings};
    GuardedDisk m_guardedDisk{m_disk, m_hosts};
    SystemDialogs m_dialogs;
    SystemPrograms m_programs;
    SystemEventPump m_events;
    SystemClockAndRandom m_clock;
    StatusLineModel m_statusLine;
    SystemPlayerWindow m_player;
    WindowsClipboard m_clipboard;
    Environment m_environment{m_text,      m_guardedDisk, m_drives,    m_dialogs,    m_userSettings,
                              m_programs,  m_events,      m_clock,     m_statusLine, m_player,
                              m_clipboard, m_hosts,       kDiskReaders};
};

}  // namespace tobbin

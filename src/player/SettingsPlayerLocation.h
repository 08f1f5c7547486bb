#pragma once

#include <string>

#include "catalogue/clsINI.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {

// Keeps the player program's path in the settings.
class SettingsPlayerLocation : public PlayerLocation {
 public:
    explicit SettingsPlayerLocation(clsINI& settings) : m_settings(settings) {}

    std::string PlayerPath() const override { return m_settings.LocOfWinAmpExe(); }
    void OnPlayerFound(const std::string& path) override {
        m_settings.LocOfWinAmpExe(path);
        m_settings.Save(m_settings.SettingsPath());
    }

 private:
    clsINI& m_settings;
};

}  // namespace tobbin

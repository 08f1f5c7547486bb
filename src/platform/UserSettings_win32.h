#pragma once

#include <optional>
#include <string>

#include "platform/Environment.h"

namespace tobbin {

// The user's part of the registry, each setting as a text.
class RegistrySettings : public UserSettings {
 public:
    // The key below HKEY_CURRENT_USER.
    explicit RegistrySettings(std::wstring key = L"Software\\Tobbin\\Options")
        : m_key(std::move(key)) {}

    std::optional<std::string> MaybeRead(const std::string& key) override;
    bool Write(const std::string& key, const std::string& value) override;

 private:
    std::wstring m_key;
};

}  // namespace tobbin

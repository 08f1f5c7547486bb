#pragma once

#include "platform/Environment.h"

namespace tobbin {

class WindowsClipboard : public SystemClipboard {
 public:
    void OfferFiles(const std::vector<std::string>& paths) override;
    bool HasFilesOfOthers() const override;
    std::vector<std::string> Files() const override;
    std::uint32_t ChangeNumber() const override;
};

}  // namespace tobbin

#pragma once

#include "platform/Environment.h"

namespace tobbin {

class WindowsClipboard : public SystemClipboard {
 public:
    void OfferFiles(const std::vector<std::string>& paths) override;
};

}  // namespace tobbin

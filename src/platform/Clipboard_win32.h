#pragma once

#include "platform/Outside.h"

namespace tobbin {

class WindowsClipboard : public SystemClipboard {
 public:
    void OfferFiles(const std::vector<std::string>& paths) override;
};

}  // namespace tobbin

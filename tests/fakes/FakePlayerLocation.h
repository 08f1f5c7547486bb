#pragma once

#include <string>

#include "search/PlayerDiscovery.h"

namespace tobbin {

class FakePlayerLocation : public PlayerLocation {
 public:
    std::string path = "as before";
    std::string PlayerPath() const override { return path; }
    void OnPlayerFound(const std::string& found) override { path = found; }
};

}  // namespace tobbin

#pragma once

#include "platform/PlayerWindow.h"

namespace tobbin {

// The player's window among those of the desktop. A wait for an answer leaves messages that other
// programs send to this one unhindered, so that the two can't wait for each other.
class SystemPlayerWindow : public PlayerWindow {
 public:
    Handle Find() override;
    std::string Program(Handle window) override;
    std::string Caption(Handle window) override;
    std::uint32_t Registered(const wchar_t* name) override;
    PlayerReply Send(Handle window, std::uint32_t message, std::int32_t wParam, std::int32_t lParam,
                     int limitMilliseconds) override;
    PlayerReply SendData(Handle window, std::uint32_t identifier, std::string_view bytes,
                         int limitMilliseconds) override;
};

}  // namespace tobbin

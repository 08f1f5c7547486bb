#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tobbin {

// What came of a message to the player's window.
struct PlayerReply {
    enum class Outcome {
        Replied,
        NoWindow,  // there is no such window any more; the message had no effect
        TimedOut,  // the player may still act on the message when it gets to it
        Denied,    // the player has more rights than this program, whose messages don't reach it
    };
    Outcome outcome = Outcome::Replied;
    std::int32_t value = 0;  // the reply as a signed 32-bit number; 0 without one
};

// The main window of the external player: a separate program that may be slow, hang or vanish at
// any moment, and may be a 32-bit one. No call waits longer than its limit.
class PlayerWindow {
 public:
    using Handle = std::uintptr_t;  // 0 stands for no window

    virtual ~PlayerWindow() = default;

    // The window of the player's class, whatever its title; 0 when there is none.
    virtual Handle Find() = 0;

    // The full path of the program that the window belongs to; empty where it can't be told.
    virtual std::string Program(Handle window) = 0;

    // The window's caption, without asking its program; empty when there is no window.
    virtual std::string Caption(Handle window) = 0;

    // The number of the message that the system has registered under this name.
    virtual std::uint32_t Registered(const wchar_t* name) = 0;

    // Sends a message with two numbers, each sign-extended to the system's width.
    virtual PlayerReply Send(Handle window, std::uint32_t message, std::int32_t wParam,
                             std::int32_t lParam, int limitMilliseconds) = 0;

    // Sends a copy-data message: the identifier, and a copy of all the bytes.
    virtual PlayerReply SendData(Handle window, std::uint32_t identifier, std::string_view bytes,
                                 int limitMilliseconds) = 0;
};

}  // namespace tobbin

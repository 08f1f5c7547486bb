#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "tobbin_player/Player.h"
#include "util/PlayerMessages.h"
#include "util/SystemText.h"

namespace tobbin::player {

// What other programs send to the player's window: see docs/player-messages.md. Numbers that mean
// nothing do nothing and are answered 0.
class Messages {
 public:
    static constexpr std::uint64_t kAddFile = 100;  // the identifier of a copy-data record

    // `text` decodes the system's own code page; `close` ends the player, after the message.
    Messages(Player& player, const SystemText& text, std::function<void()> close)
        : m_player(player), m_text(text), m_close(std::move(close)) {}

    // WM_USER, whose second parameter is the operation. Returns the reply.
    std::int64_t OnUser(std::uint64_t argument, std::int64_t operation);

    // WM_COMMAND without a control. Returns whether it was one of the player's.
    bool OnCommand(std::uint64_t id);

    // The data of kAddFile: a path in the system's code page, with a NUL at its end. And the path
    // by our own message. Both return the reply.
    std::int64_t OnAddFile(std::string_view bytes);
    std::int64_t OnAddPath(std::u16string_view path);

    std::int64_t OnTrackNumber(std::uint64_t question = kTrackNumber);

 private:
    std::int64_t Add(std::string path);

    Player& m_player;
    const SystemText& m_text;
    std::function<void()> m_close;
};

}  // namespace tobbin::player

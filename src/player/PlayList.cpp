#include "player/PlayList.h"

#include "util/Errors.h"

namespace tobbin {

std::int32_t PlayList::Song(std::int32_t place) const {
    if (place < 1 || place > UpperBound())
        throw SubscriptOutOfRangeError();
    return m_records[static_cast<std::size_t>(place) - 1];
}

}  // namespace tobbin

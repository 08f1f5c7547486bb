#include "ui/Commands.h"

#include <algorithm>
#include <iterator>

#include "util/Check.h"

namespace tobbin {
namespace {

template <typename Test>
const CommandRow* MaybeFirst(Test test) {
    const CommandRow* const found = std::ranges::find_if(kCommands, test);
    return found != std::end(kCommands) ? found : nullptr;
}

}  // namespace

const CommandRow* MaybeRowOf(int number) {
    return MaybeFirst(
        [&](const CommandRow& row) { return static_cast<int>(row.command) == number; });
}

const CommandRow& RowOf(Command command) {
    const CommandRow* const row = MaybeRowOf(static_cast<int>(command));
    CHECK(row != nullptr);
    return *row;
}

const CommandRow* MaybeRowAt(Menu menu, int position) {
    return MaybeFirst([&](const CommandRow& row) {
        const MenuPlace* const place = MaybePlaceIn(menu, row);
        return place != nullptr && place->position == position;
    });
}

const CommandRow* MaybeRowOfButton(int index) {
    return MaybeFirst(
        [&](const CommandRow& row) { return index > 0 && row.button.index == index; });
}

const MenuPlace* MaybePlaceIn(Menu menu, const CommandRow& row) {
    const MenuPlace* const place = std::ranges::find(row.places, menu, &MenuPlace::menu);
    return place != std::end(row.places) ? place : nullptr;
}

}  // namespace tobbin

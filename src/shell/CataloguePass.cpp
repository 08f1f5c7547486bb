#include "shell/CataloguePass.h"

#include "jukebox/RecordMoves.h"

namespace tobbin {

bool RunCataloguePass(Application& application, const std::function<bool()>& pass) {
    if (application.Groups().IsBuilding())
        return false;
    RecordMoves moves(application.Catalogue());
    const bool result = pass();
    const bool moved = moves.Find();
    for (std::size_t i = 0; i < application.Count(); ++i)
        moves.Apply(application.At(i));
    if (Jukebox* const held = application.Clipboard().MaybeStore())
        moves.Apply(*held);
    if (moved)
        application.SongsToPlay().Follow(
            [&](std::int32_t record) { return moves.NumberNow(record); });
    return result;
}

}  // namespace tobbin

// The song memory: whatever was read is written so that it is read again as the same.
#include "catalogue/SongMemory.h"
#include "Fuzzing.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    RecordTable table;
    for (std::int32_t record = 1; record <= 5; ++record) {
        const bool isCleared = record != 2;
        table.Set(1, record, isCleared ? "0" : "C:\\");
        table.Set(2, record, isCleared ? "0" : "a.mp3");
        table.Set(3, record, isCleared ? "0" : "1");
        table.Set(4, record, std::to_string(record == 5 ? 9 : record));
    }
    SongMemory memory;
    memory.Read(bytes, table);
    for (const SongMemory::Cleared& song : memory.ClearedSongs()) {
        CHECK(song.record >= 1 && song.record <= table.Size() && IsCleared(table, song.record));
        CHECK(!song.folder.empty() && !song.name.empty());
    }
    table.Set(4, 5, "5");
    const std::string written = memory.Write(table, true);
    SongMemory again;
    CHECK(again.Read(written, table).outcome == LoadOutcome::Loaded);
    CHECK(again.Write(table, true) == written);
}

}  // namespace tobbin

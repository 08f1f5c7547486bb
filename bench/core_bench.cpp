// Measures the core beside what can't be avoided: core_bench [LIBRARY SONGS]... [options of Google
// Benchmark]. Each LIBRARY is a folder made by make_library; scripts/bench makes the table.

#include <cstdlib>
#include <filesystem>

#include "Rows.h"

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    for (int i = 1; i + 1 < count; i += 2) {
        if (!std::filesystem::is_directory(arguments[i]))
            return EXIT_FAILURE;
        tobbin::AddLibraryRows(arguments[i], std::atoi(arguments[i + 1]));
    }
    tobbin::AddSortRows();
    tobbin::AddCatalogueRows();
    tobbin::AddJukeboxRows();
    tobbin::AddEditingRows();
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

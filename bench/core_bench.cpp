// Measures the core beside what can't be avoided: core_bench [--cold] [LIBRARY SONGS]... [options
// of Google Benchmark]. Each LIBRARY is a folder made by make_library; scripts/bench makes the
// table. With --cold only the libraries are measured, with nothing of them in the system's caches.

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "Rows.h"

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    const bool cold = count > 1 && std::string_view(arguments[1]) == "--cold";
    for (int i = cold ? 2 : 1; i + 1 < count; i += 2) {
        if (!std::filesystem::is_directory(arguments[i]))
            return EXIT_FAILURE;
        tobbin::AddLibraryRows(arguments[i], std::atoi(arguments[i + 1]), cold);
    }
    if (!cold) {
        tobbin::AddSortRows();
        tobbin::AddCatalogueRows();
        tobbin::AddJukeboxRows();
        tobbin::AddEditingRows();
    }
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

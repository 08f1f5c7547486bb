#pragma once

#include <string>
#include <vector>

namespace tobbin::bench {

// Lists each of the trees with the calls that the program makes for a folder, and does nothing else
// with what they give. Returns the milliseconds; adds up the songs.
double ListBare(const std::vector<std::wstring>& roots, int& songs);

// The program's own search of the hard drives into an empty catalogue, with the splash window
// open and events let through. Returns the milliseconds. A data folder is not touched.
double SearchAsTheProgram(int& songs);

}  // namespace tobbin::bench

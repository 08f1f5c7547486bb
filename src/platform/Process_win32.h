#pragma once

#include <string>
#include <vector>

namespace tobbin {

// To be called first of all by main. From then on the system shows no error boxes of its own (a
// drive without a medium), looks for DLLs in its own folder only, and ends the program when its
// memory is damaged; a broken CHECK and an exception that nobody caught are told in a box.
void PrepareProcess();

// The program file's folder, with "\" at its end.
std::string ProgramFolder();

// The files named on the command line, as full paths.
std::vector<std::string> FilesOnCommandLine();

// The person's folder for what the program keeps on this computer, with "\" at its end; it need not
// be there yet. Empty when the system has none.
std::string PersonalDataFolder();

// The system's folder, with "\" at its end.
std::string SystemFolder();

}  // namespace tobbin

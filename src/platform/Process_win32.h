#pragma once

#include <string>
#include <vector>

namespace tobbin {

// To be called first of all by main. From then on the system shows no error boxes of its own (a
// drive without a medium), looks for DLLs in its own folder only, and ends the program when its
// memory is damaged; a broken CHECK and an exception that nobody caught are told in a box. These
// and any other crash leave a minidump, CrashDumpPath, and nothing is sent to anybody.
void PrepareProcess();

// Where a crash leaves its minidump, in the person's folder and with the program's name; empty
// without one.
std::string CrashDumpPath();

// The program file's folder, with "\" at its end.
std::string ProgramFolder();

// The files named on the command line, as full paths.
std::vector<std::string> FilesOnCommandLine();

// The person's folder for what the program keeps on this computer, with "\" at its end; it need not
// be there yet. Empty when the system has none.
std::string PersonalDataFolder();

// The system's folder, with "\" at its end, and that of its libraries for 32-bit programs; the
// latter is empty on a system that is a 32-bit one itself.
std::string SystemFolder();
std::string SystemFolderOf32Bit();

}  // namespace tobbin

#pragma once

#include <string>

// Sends Tobbin's frame and its player panel so many random messages, of the kinds that a player can
// send a program that it doesn't know. Returns what was sent, in words.
std::string Pester(int count);

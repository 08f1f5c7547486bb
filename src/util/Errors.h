#pragma once

#include <stdexcept>
#include <string>

namespace tobbin {

// The three run-time errors that converting and subscripting may raise. Everything else that can
// go wrong in the program is a value (see platform/Disk.h), never an exception.

// A number left the range of its type.
class OverflowError : public std::runtime_error {
 public:
    OverflowError() : std::runtime_error("Overflow") {}
};

// A text that had to be a number is none.
class TypeMismatchError : public std::runtime_error {
 public:
    TypeMismatchError() : std::runtime_error("Type mismatch") {}
};

// A row or column outside a table's bounds.
class SubscriptOutOfRangeError : public std::runtime_error {
 public:
    SubscriptOutOfRangeError() : std::runtime_error("Subscript out of range") {}
};

}  // namespace tobbin

// What the program reports on standard error, and with which exit code it ends.
#pragma once

#include <stdexcept>

/// The command line asks for something that cannot be: exit code 2.
class BadArgument : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A file or a computation fails: exit code 1.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

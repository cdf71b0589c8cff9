// What the program reports on standard error, and with which exit code it ends.
#pragma once

#include <base/exception.h>

#include <stdexcept>
#include <string>

enum ExitCode { exitGood = 0, exitFailed = 1, exitBadArguments = 2, exitStopped = 130 };

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

/// What the library's exceptions write of themselves.
std::string textOf(const mvException& error);

/// What the system says of an error number; safe from several threads.
std::string systemText(int error);

struct Report {
    std::string text;
    ExitCode exitCode;
};

/// What there is to say of the exception that is being handled.
Report reportOfException();

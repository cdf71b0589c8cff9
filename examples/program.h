// What every example does around its own work.
#pragma once

/// The exit code of a program that does its `work`: 0 when it is done; 1 when it throws, with what
/// went wrong on standard error; 2, with a line of usage, unless there is an argument for each word
/// of `arguments`.
int runExample(int argc, char** argv, const char* arguments, void (*work)(char** argv));

// What an archive file holds, for people.
#pragma once

#include <ostream>
#include <string>

/// Writes class and parameters of every object in the file. Throws a Failure when a record cannot
/// be read; what stands before it has been written then.
void reportArchive(const std::string& path, std::ostream& out);

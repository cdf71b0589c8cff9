// The errors of archives.
#include <base/archive.h>

#include <ostream>

mvArchive::UnknownVersion::UnknownVersion(const char* text, long number)
    : text_(text ? std::make_shared<const std::string>(text) : nullptr), number_(number) {}

mvArchive::UnknownVersion::~UnknownVersion() = default;
void mvArchive::UnknownVersion::suicideAndRethrow() {
    deleteAndThrow(this);
}

void mvArchive::UnknownVersion::message_(std::ostream& out) const {
    out << "The archive holds a record of an unknown version";
    if (text_) out << " (" << *text_ << ", " << number_ << ')';
    out << '.';
}

mvArchive::Truncated::Truncated(const char* message) : mvExceptionWithString(message) {}
mvArchive::Truncated::~Truncated() = default;
void mvArchive::Truncated::suicideAndRethrow() {
    deleteAndThrow(this);
}

mvArchive::BadValue::BadValue(const char* message) : mvExceptionWithString(message) {}
mvArchive::BadValue::~BadValue() = default;
void mvArchive::BadValue::suicideAndRethrow() {
    deleteAndThrow(this);
}

mvArchive::UnknownClass::UnknownClass(const char* message) : mvExceptionWithString(message) {}
mvArchive::UnknownClass::~UnknownClass() = default;
void mvArchive::UnknownClass::suicideAndRethrow() {
    deleteAndThrow(this);
}

mvArchive::WriteFailed::WriteFailed(const char* message) : mvExceptionWithString(message) {}
mvArchive::WriteFailed::~WriteFailed() = default;
void mvArchive::WriteFailed::suicideAndRethrow() {
    deleteAndThrow(this);
}

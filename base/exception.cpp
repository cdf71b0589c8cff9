// The exception family of the base library.
#include <base/archive.h>
#include <base/exception.h>
#include <base/internal/class_name.h>

#include <ostream>
#include <typeinfo>
#include <utility>

std::ostream& operator<<(std::ostream& out, const mvException& exception) {
    exception.message_(out);
    return out;
}

mvException::~mvException() = default;

long mvException::errorNumber() const {
    return 0;
}

void mvException::suicideAndRethrow() {
    deleteAndThrow(this);
}

void mvException::message_(std::ostream& out) const {
    out << mvi::className(typeid(*this));
}

mvExceptionWithString::mvExceptionWithString(const char* message)
    : text_(message ? std::make_shared<const std::string>(message) : nullptr) {}

mvExceptionWithString::~mvExceptionWithString() = default;

void mvExceptionWithString::suicideAndRethrow() {
    deleteAndThrow(this);
}

void mvExceptionWithString::dispatchSerialize(mvArchive& ar) {
    if (haveVisited(ar, this, sizeof(mvExceptionWithString))) return;
    bool hasMessage = text_ != nullptr;
    std::string text = hasMessage ? *text_ : std::string();
    ar || hasMessage;
    if (hasMessage) ar || text;
    if (!ar.isStoring()) {
        text_ = hasMessage ? std::make_shared<const std::string>(std::move(text)) : nullptr;
    }
    setVisited(ar, this, sizeof(mvExceptionWithString));
}

void mvExceptionWithString::message_(std::ostream& out) const {
    if (text_) {
        out << *text_;
    } else {
        mvException::message_(out);
    }
}

mvStatusException::~mvStatusException() = default;

void mvStatusException::suicideAndRethrow() {
    deleteAndThrow(this);
}

void mvStatusException::dispatchSerialize(mvArchive& ar) {
    if (haveVisited(ar, this, sizeof(mvStatusException))) return;
    ar || status_;
    setVisited(ar, this, sizeof(mvStatusException));
}

void mvStatusException::message_(std::ostream& out) const {
    out << "The operation failed with status " << status_ << '.';
}

void mfThrowExceptionOnFailure(long status) {
    if (status != 0) throw mvStatusException(status);
}

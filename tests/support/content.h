// What an archive is read as.
#pragma once

#include <base/archive.h>

#include <memory>
#include <span>
#include <string>

#include "support/use.h"

namespace archive {

/// One value of a known type, or objects by pointer.
class Content {
  public:
    virtual ~Content() = default;

    /// Loads the value, or one more object.
    virtual void load(mvArchive& ar) = 0;
    virtual bool takesMore() const = 0;

    /// Stores all that was loaded.
    virtual void store(mvArchive& ar) = 0;
    virtual void use(Steps& steps, long largestArea = kLargestArea) = 0;
};

struct ContentKind {
    const char* name;
    std::unique_ptr<Content> (*make)();
};

/// "pointers", "buffer", and the name of each registered class for an object of that type.
std::span<const ContentKind> contentKinds();

/// The kind of that name; null when there is none.
const ContentKind* contentKind(std::string_view name);

/// Loads `bytes` to their end.
void load(Content& content, const std::string& bytes);

}  // namespace archive

// Operations upon what came out of an archive, one after the other.
#include "support/steps.h"

#include <base/exception.h>

#include <new>
#include <stdexcept>

namespace archive {

void tolerate(const Operation& operation) {
    try {
        operation();
    } catch (const mvException&) {
    } catch (const std::length_error&) {
    } catch (const std::bad_alloc&) {
    }
}

void Steps::run(const char*, double, const Operation& operation) {
    tolerate(operation);
}

bool Steps::failsWithoutMemory(const Operation&) {
    return false;
}

}  // namespace archive

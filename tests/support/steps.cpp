// Operations upon what came out of an archive, one after the other.
#include "support/steps.h"

#include <base/exception.h>

#include <new>
#include <stdexcept>

namespace archive {

void tolerate(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const mvException&) {
    } catch (const std::length_error&) {
    } catch (const std::bad_alloc&) {
    }
}

void Steps::run(const char*, double, const std::function<void()>& operation) {
    tolerate(operation);
}

}  // namespace archive

// Exceptions as texts and exit codes.
#include "failure.h"

#include <filt/fft.h>

#include <exception>
#include <new>
#include <sstream>
#include <system_error>

std::string textOf(const mvException& error) {
    std::ostringstream text;
    text << error;
    return text.str();
}

std::string systemText(int error) {
    return std::generic_category().message(error);
}

Report reportOfException() {
    try {
        throw;
    } catch (const BadArgument& error) {
        return {error.what(), exitBadArguments};
    } catch (const mvFrequencyDefs::InvalidArgument& error) {
        return {textOf(error), exitBadArguments};
    } catch (const std::length_error&) {
        return {"the filter is too large: sigma or plateau is out of range", exitBadArguments};
    } catch (const mvException& error) {
        return {textOf(error), exitFailed};
    } catch (const std::bad_alloc&) {
        return {"memory is short", exitFailed};
    } catch (const std::exception& error) {
        return {error.what(), exitFailed};
    }
}

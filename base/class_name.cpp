// The readable name of a class.
#include <base/internal/class_name.h>

#if __has_include(<cxxabi.h>)

#include <cxxabi.h>

#include <cstdlib>
#include <memory>

std::string mvi::className(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return name ? name.get() : type.name();
}

#else

#include <string_view>

std::string mvi::className(const std::type_info& type) {
    std::string_view name = type.name();
    for (const std::string_view kind : {"class ", "struct "}) {
        if (name.starts_with(kind)) name.remove_prefix(kind.size());
    }
    return std::string(name);
}

#endif

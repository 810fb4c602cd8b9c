// The command line, taken apart: options with a value, and what is left.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tonvale {

struct Option {
    std::string_view name;  // "--formato"
    // Takes the option's value; an Italian text says why it cannot.
    std::function<std::optional<std::string>(const std::string& value)> take;
};

struct ParsedArguments {
    std::vector<std::string> rest;     // what is no option, in its order
    std::optional<std::string> error;  // Italian; the first thing that is wrong
};

// Options are written "--name value" or "--name=value"; after "--" nothing is an option.
ParsedArguments ParseOptions(std::span<const std::string> arguments,
                             std::span<const Option> options);

}  // namespace tonvale

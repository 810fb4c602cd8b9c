// The command line, taken apart: options with a value, and what is left.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/text.h"

namespace tonvale {

struct Option {
    std::string_view name;  // "--formato"
    // Takes the option's value; an Italian text says why it cannot.
    std::function<std::optional<std::string>(const std::string& value)> take;
    bool has_value = true;  // else it is written alone and takes an empty text
};

struct ParsedArguments {
    std::vector<std::string> rest;     // what is no option, in its order
    std::optional<std::string> error;  // Italian; the first thing that is wrong
};

// Options are written "--name value" or "--name=value"; after "--" nothing is an option.
ParsedArguments ParseOptions(std::span<const std::string> arguments,
                             std::span<const Option> options);

// --- Options of common forms ---------------------------------------------------------------------

// What an option says of a value that it cannot take.
std::string UnknownValue(std::string_view option, std::string_view value);

// Takes any text.
Option TextOption(std::string_view name, std::string& target);

// Is written alone, and sets the target.
Option FlagOption(std::string_view name, bool& target);

// A word of the command line and what it stands for.
template <typename Value>
struct Choice {
    std::string_view word;
    Value value;
};

// Takes one of the words of a table, in upper or lower case. The table outlives the option.
template <typename Choices, typename Value>
Option ChoiceOption(std::string_view name, const Choices& choices, Value& target) {
    return {name,
            [name, &choices, &target](const std::string& value) -> std::optional<std::string> {
                for (const auto& choice : choices) {
                    if (!EqualsIgnoringCase(choice.word, value)) continue;
                    target = choice.value;
                    return std::nullopt;
                }
                return UnknownValue(name, value);
            }};
}

}  // namespace tonvale

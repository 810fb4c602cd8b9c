#include "calc/options.h"

#include <algorithm>
#include <cstddef>

namespace tonvale {

namespace {

bool LooksLikeOption(std::string_view argument) {
    return argument.substr(0, 2) == "--";
}

const Option* FindOption(std::span<const Option> options, std::string_view name) {
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const Option& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

}  // namespace

ParsedArguments ParseOptions(std::span<const std::string> arguments,
                             std::span<const Option> options) {
    ParsedArguments parsed;
    std::size_t i = 0;
    for (; i < arguments.size() && arguments[i] != "--"; ++i) {
        const std::string& argument = arguments[i];
        if (!LooksLikeOption(argument)) {
            parsed.rest.push_back(argument);
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string_view name = argument;
        const Option* option = FindOption(options, name.substr(0, equals));
        if (option == nullptr) return {{}, "opzione sconosciuta: " + argument};
        std::string value;
        if (!option->has_value) {
            if (equals != std::string::npos) return {{}, "opzione senza valore: " + argument};
        } else if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (++i < arguments.size()) {
            value = arguments[i];
        } else {
            return {{}, "manca il valore dell'opzione " + argument};
        }
        if (auto error = option->take(value)) return {{}, std::move(error)};
    }
    for (++i; i < arguments.size(); ++i) parsed.rest.push_back(arguments[i]);
    return parsed;
}

std::string UnknownValue(std::string_view option, std::string_view value) {
    std::string text = "valore non ammesso per ";
    return text.append(option).append(": ").append(value);
}

Option TextOption(std::string_view name, std::string& target) {
    return {name, [&target](const std::string& value) -> std::optional<std::string> {
                target = value;
                return std::nullopt;
            }};
}

Option FlagOption(std::string_view name, bool& target) {
    return {name,
            [&target](const std::string&) -> std::optional<std::string> {
                target = true;
                return std::nullopt;
            },
            false};
}

}  // namespace tonvale

#include "exposure/typed_value.h"

#include <utility>

#include "common/numbers.h"

namespace tonvale {

std::optional<UserMessage> CheckTypedValue(std::string_view text, std::string caption) {
    if (ParseNumber(text) != 0) return std::nullopt;
    return UserMessage{std::move(caption), "Errore. Inserire valori numerici!"};
}

std::optional<UserMessage> CheckTypedLevel(std::string_view level_dba) {
    return CheckTypedValue(level_dba, "Livello di esposizione");
}

}  // namespace tonvale

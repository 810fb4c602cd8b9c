#include "hearing/hearing_fields.h"

#include <array>
#include <cstddef>

namespace tonvale {

HearingRefusal RefusalOf(HearingField field) {
    constexpr std::array<const char*, 3> kCaptions{"Anni di esposizione.",
                                                   "Livello di esposizione.", "Età individuo."};
    return {field, {kCaptions[static_cast<std::size_t>(field)], "Errore! Dati non validi"}};
}

}  // namespace tonvale

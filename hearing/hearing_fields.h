// The typed fields of the hearing-damage dialogs, as far as a dialog refuses what they hold.
#pragma once

#include "common/user_message.h"

namespace tonvale {

enum class HearingField { kYears, kLevel, kAge };

// "Errore! Dati non validi", its caption the name of the field.
struct HearingRefusal {
    HearingField field;
    UserMessage message;
};

HearingRefusal RefusalOf(HearingField field);

}  // namespace tonvale

// The sixteen colours that text can have, in the order of their commands.
#pragma once

#include <array>

#include "common/canvas.h"

namespace tonvale {

inline constexpr std::array<Color, 16> kTextColors = {{
    {0, 0, 0},        // Nero
    {128, 0, 0},      // Bordeaux
    {0, 255, 0},      // Verde
    {128, 128, 0},    // Verde oliva
    {0, 0, 128},      // Blu scuro
    {128, 0, 128},    // Viola
    {64, 128, 128},   // Verde acqua
    {128, 128, 128},  // Grigio
    {192, 192, 192},  // Grigio chiaro
    {255, 0, 0},      // Rosso
    {128, 255, 0},    // Verde limone
    {255, 255, 0},    // Giallo
    {0, 0, 255},      // Blu
    {255, 0, 128},    // Fucsia
    {0, 128, 255},    // Azzurro
    {255, 255, 255},  // Bianco
}};

}  // namespace tonvale

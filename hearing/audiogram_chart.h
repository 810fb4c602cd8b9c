// The drawing of an audiogram, in the dialog, on paper and as a picture.
#pragma once

#include "common/canvas.h"
#include "hearing/binaural_damage.h"

namespace tonvale {

// Draws `audiogram` into `area` in the canvas's current font, as audiologists do: frequencies along
// a logarithmic axis, losses downwards from -10 to 120 dB, the right ear with red circles, the left
// one with blue crosses; a symmetric loss is one curve. Without colour all is black, and the
// symbols tell the ears apart. Losses beyond the scale are cut off. The paper is taken for white.
void DrawAudiogram(Canvas& canvas, const Rect& area, const Audiogram& audiogram, bool use_color);

}  // namespace tonvale

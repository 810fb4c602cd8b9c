// The bar chart of an octave-band spectrum, in the dialogs, on paper and as a picture.
#pragma once

#include "common/canvas.h"
#include "protectors/octave_bands.h"

namespace tonvale {

struct OctaveChartScale {
    int full_scale_db = 0;
    int step_db = 10;     // from one line of the grid to the next
    int label_steps = 2;  // from one label to the next
};

// The ground of charts on paper and in pictures; in a dialog it is the dialog's own.
inline constexpr Color kChartGround{240, 240, 240};

// Draws the bars into `area` in the canvas's current font. Lengths are device units, but for the
// widths of lines; all divisions truncate. A level below 0
// has no bar, one above the full scale ends at the top. The top label stands above `area` by the
// font's ascent. An area without room for a scale or for bars gets none.
void DrawOctaveChart(Canvas& canvas, const Rect& area, const OctaveChartScale& scale,
                     const OctaveSpectrum& levels_db, Color ground);

// Draws the frequencies into `row`, each centred below its bar in a chart of the same width.
void DrawOctaveBandNames(Canvas& canvas, const Rect& row);

}  // namespace tonvale

// Any data file of its kind is evaluated, told and drawn; what is stored of it reads back the same.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "common/file_kinds.h"
#include "common/svg_canvas.h"
#include "hearing/audiogram_chart.h"
#include "hearing/audiogram_damage.h"

namespace {

using tonvale::AudiogramDamageForm;
using tonvale::ProfileFile;

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckStored(AudiogramDamageForm form, ProfileFile file) {
    form.notes.clear();  // a line end at their end is not stored
    StoreForm(form, file);
    const ProfileFile read = ProfileFile::Parse(file.Serialize());
    AudiogramDamageForm again;
    Check(LoadForm(read, again));
    Check(Summary(again, ";") == Summary(form, ";"));
    Check(AudiogramOf(again).left_db == AudiogramOf(form).left_db);
    Check(again.is_symmetric || AudiogramOf(again).right_db == AudiogramOf(form).right_db);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ProfileFile file = ProfileFile::Parse(bytes);
    file.Set(tonvale::kHeaderSection, tonvale::kKindKey, "ILG");
    AudiogramDamageForm form;
    Check(LoadForm(file, form));
    CheckStored(form, file);
    const tonvale::Assessment assessment = AssessAudiogramDamage(file);
    // An ear of 64 % and one that has lost 4.
    Check(std::fabs(assessment.results.at(0).value) < 64.001);
    Check(!PrintoutAsText(assessment.printout).empty());
    const int side = static_cast<int>(size % 700);
    tonvale::SvgCanvas canvas({side, side});
    DrawAudiogram(canvas, {0, 0, side, side}, AudiogramOf(form), size % 2 == 0);
    return 0;
}

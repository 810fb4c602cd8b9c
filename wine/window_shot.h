// What tonvale-shot and the library that it hooks into the program agree upon.
#pragma once

namespace tonvale::shot {

inline constexpr wchar_t kHookLibrary[] = L"tonvale-shot-hook.dll";
inline constexpr char kHookProcedure[] = "TakeShotHook";
inline constexpr wchar_t kMessage[] = L"TonvaleTakeShot";         // registered window message
inline constexpr wchar_t kFileVariable[] = L"TONVALE_SHOT_FILE";  // of the environment: the PNG
inline constexpr wchar_t kDoneEvent[] = L"TonvaleShotDone";       // set once the picture is written

}  // namespace tonvale::shot

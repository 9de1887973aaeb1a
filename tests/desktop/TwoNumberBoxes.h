#pragma once
// The form the window tests look at: 320 x 200 pixels with two number
// boxes 100 pixels wide, "a" on rows 20-40 and "b" on rows 60-80.

namespace kestu::test {

inline constexpr const char* kTwoNumberBoxes =
    "form F 4800 3000\n"
    "new KestuNumberEdit a 300 300 1500 315\n"
    "new KestuNumberEdit b 300 900 1500 315\n";

}  // namespace kestu::test

#include "kestu/desktop/KeyTable.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <utility>

namespace kestu {
namespace {

// The window system's key and the host's code: letters and digits by their
// upper-case code, function keys from 112, named keys whose code is not
// their character (SDL's Delete is 127), punctuation as on a US keyboard
// with "ç" where ";" is, and 0 for a key the host has no code for.
TEST(KeyTable, VirtualKeys) {
  const std::pair<int32_t, int16_t> keys[] = {
      {SDLK_a, 'A'},     {SDLK_z, 'Z'},        {SDLK_0, '0'},         {SDLK_9, '9'},
      {SDLK_F1, 112},    {SDLK_F12, 123},      {SDLK_DELETE, 46},     {SDLK_BACKSPACE, 8},
      {SDLK_RETURN, 13}, {SDLK_KP_ENTER, 13},  {SDLK_PAGEUP, 33},     {SDLK_DOWN, 40},
      {SDLK_COMMA, 188}, {SDLK_MINUS, 189},    {SDLK_PERIOD, 190},    {SDLK_QUOTE, 222},
      {0xE7, 186},       {SDLK_KP_MINUS, 109}, {SDLK_APPLICATION, 0}, {0x20AC, 0}};
  for (const auto& [key, code] : keys) EXPECT_EQ(VirtualKeyFor(key, false), code) << key;
}

// With Num Lock on a keypad key is its digit, off the key printed under it;
// the keypad's operators do not change.
TEST(KeyTable, KeypadFollowsNumLock) {
  const std::pair<int32_t, std::pair<int16_t, int16_t>> keys[] = {{SDLK_KP_0, {96, 45}},
                                                                  {SDLK_KP_9, {105, 33}},
                                                                  {SDLK_KP_4, {100, 37}},
                                                                  {SDLK_KP_PERIOD, {110, 46}},
                                                                  {SDLK_KP_MINUS, {109, 109}}};
  for (const auto& [key, codes] : keys) {
    EXPECT_EQ(VirtualKeyFor(key, true), codes.first) << key;
    EXPECT_EQ(VirtualKeyFor(key, false), codes.second) << key;
  }
}

TEST(KeyTable, ShiftBits) {
  EXPECT_EQ(ShiftBitsFor(KMOD_NONE), 0);
  EXPECT_EQ(ShiftBitsFor(KMOD_RSHIFT), 1);
  EXPECT_EQ(ShiftBitsFor(KMOD_LSHIFT | KMOD_RCTRL), 3);
  EXPECT_EQ(ShiftBitsFor(KMOD_LALT | KMOD_NUM | KMOD_CAPS), 4);
}

}  // namespace
}  // namespace kestu

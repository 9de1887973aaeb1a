#include "kestu/desktop/KeyTable.h"

#include <SDL.h>
#include <gtest/gtest.h>

namespace kestu {
namespace {

TEST(KeyTable, KeysWhoseCodeIsNotTheirCharacter) {
  EXPECT_EQ(VirtualKeyFor(SDLK_DELETE, false), 46);  // SDL's Delete is 127
  EXPECT_EQ(VirtualKeyFor(SDLK_BACKSPACE, false), 8);
  EXPECT_EQ(VirtualKeyFor(SDLK_TAB, false), 9);
  EXPECT_EQ(VirtualKeyFor(SDLK_RETURN, false), 13);
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_ENTER, false), 13);
  EXPECT_EQ(VirtualKeyFor(SDLK_ESCAPE, false), 27);
  EXPECT_EQ(VirtualKeyFor(SDLK_INSERT, false), 45);
  const int32_t navigation[] = {SDLK_PAGEUP, SDLK_PAGEDOWN, SDLK_END,   SDLK_HOME,
                                SDLK_LEFT,   SDLK_UP,       SDLK_RIGHT, SDLK_DOWN};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(VirtualKeyFor(navigation[i], false), 33 + i);
}

TEST(KeyTable, LettersAndDigitsUseTheUpperCaseCode) {
  EXPECT_EQ(VirtualKeyFor(SDLK_a, false), 'A');
  EXPECT_EQ(VirtualKeyFor(SDLK_z, false), 'Z');
  EXPECT_EQ(VirtualKeyFor(SDLK_0, false), '0');
  EXPECT_EQ(VirtualKeyFor(SDLK_9, false), '9');
}

TEST(KeyTable, PunctuationKeysAsOnAUsKeyboard) {
  const std::pair<int32_t, int16_t> keys[] = {
      {SDLK_SEMICOLON, 186},    {SDLK_EQUALS, 187},      {SDLK_COMMA, 188},
      {SDLK_MINUS, 189},        {SDLK_PERIOD, 190},      {SDLK_SLASH, 191},
      {SDLK_BACKQUOTE, 192},    {SDLK_LEFTBRACKET, 219}, {SDLK_BACKSLASH, 220},
      {SDLK_RIGHTBRACKET, 221}, {SDLK_QUOTE, 222},       {0xE7, 186}};  // ç
  for (const auto& [key, code] : keys) EXPECT_EQ(VirtualKeyFor(key, false), code) << key;
}

TEST(KeyTable, KeypadFollowsNumLock) {
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_0, true), 96);
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_9, true), 105);
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_PERIOD, true), 110);
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_0, false), 45);       // Insert
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_1, false), 35);       // End
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_4, false), 37);       // Left
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_PERIOD, false), 46);  // Delete
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_MINUS, false), 109);
  EXPECT_EQ(VirtualKeyFor(SDLK_KP_MINUS, true), 109);
}

TEST(KeyTable, KeysTheHostHasNoCodeForAreZero) {
  EXPECT_EQ(VirtualKeyFor(SDLK_APPLICATION, false), 0);
  EXPECT_EQ(VirtualKeyFor(0x20AC, false), 0);  // a euro key
}

TEST(KeyTable, ShiftBits) {
  EXPECT_EQ(ShiftBitsFor(KMOD_NONE), 0);
  EXPECT_EQ(ShiftBitsFor(KMOD_RSHIFT), 1);
  EXPECT_EQ(ShiftBitsFor(KMOD_LSHIFT | KMOD_RCTRL), 3);
  EXPECT_EQ(ShiftBitsFor(KMOD_LALT | KMOD_NUM | KMOD_CAPS), 4);
}

}  // namespace
}  // namespace kestu

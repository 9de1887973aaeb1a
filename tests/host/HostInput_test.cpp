// The keys the host sends for a character, and the KeyPress a stroke sends
// by itself. What a control receives in what order is shown by the
// scripts in scripts/probe/.

#include <gtest/gtest.h>

#include "kestu/host/KeyStroke.h"

namespace kestu {
namespace {

TEST(HostKeyboard, KeyStrokesForCharacters) {
  EXPECT_EQ(KeyStrokeFor(U'7'), (KeyStroke{55, 0}));
  EXPECT_EQ(KeyStrokeFor(U'-'), (KeyStroke{189, 0}));
  EXPECT_EQ(KeyStrokeFor(U'.'), (KeyStroke{190, 0}));
  EXPECT_EQ(KeyStrokeFor(U' '), (KeyStroke{32, 0}));
  EXPECT_EQ(KeyStrokeFor(U'\u00C7'), (KeyStroke{186, 1}));
  EXPECT_EQ(KeyStrokeFor(U'/'), (KeyStroke{0, 0}));
  EXPECT_EQ(KeyStrokeFor(U'\u20AC'), (KeyStroke{0, 0}));
}

TEST(KeyStroke, KeyPressesThatTextInputNeverCarries) {
  EXPECT_EQ(KeyPressOfKey(8, 0), 8);
  EXPECT_EQ(KeyPressOfKey(13, 1), 13);
  EXPECT_EQ(KeyPressOfKey(27, 0), 27);
  EXPECT_EQ(KeyPressOfKey('C', 2), 3);  // Ctrl+C
  EXPECT_EQ(KeyPressOfKey('V', 3), 22);
  // Text input carries these: sending them here would type them twice.
  EXPECT_EQ(KeyPressOfKey(32, 0), 0);
  EXPECT_EQ(KeyPressOfKey('C', 0), 0);
  EXPECT_EQ(KeyPressOfKey('C', 6), 0);  // Ctrl+Alt is AltGr: a character
  EXPECT_EQ(KeyPressOfKey(46, 0), 0);
}

}  // namespace
}  // namespace kestu

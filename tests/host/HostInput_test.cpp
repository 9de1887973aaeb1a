// Focus, keyboard, mouse, capture and caret as the host handles them.

#include <gtest/gtest.h>

#include "kestu/host/KeyStroke.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

const std::string kTwoProbes =
    "new KestuProbe a 0 0 1200 480\n"
    "new KestuProbe b 1500 0 1200 480\n";

TEST(HostFocus, TheOldHolderLosesFocusBeforeTheNewOneGetsIt) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "focus a\n"
                       "focus b\n"
                       "focus b\n"
                       "call b.HasFocus\n"
                       "call a.FocusSelf\n"),
            "event a.Called(Procedure=\"GotFocus\")\n"
            "event a.Called(Procedure=\"LostFocus\")\n"
            "event b.Called(Procedure=\"GotFocus\")\n"
            "b.HasFocus -> True\n"
            "event b.Called(Procedure=\"LostFocus\")\n"
            "event a.Called(Procedure=\"GotFocus\")\n");
}

TEST(HostFocus, ADisabledControlGetsNoFocusAndNoInput) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "call a.Disable\n"
                       "focus a\n"
                       "key a 65\n"
                       "type a \"x\"\n"
                       "click a\n"
                       "call a.HasFocus\n"),
            "a.HasFocus -> False\n");
}

TEST(HostFocus, FocusOnAnotherFormActivatesThatForm) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "call a.FormIsActive\n"
                       "form Form2 3000 2000\n"
                       "call a.FormIsActive\n"
                       "focus a\n"
                       "call a.FormIsActive\n"
                       "activate Form2\n"
                       "call a.FormIsActive\n"),
            "a.FormIsActive -> True\n"
            "a.FormIsActive -> False\n"
            "event a.Called(Procedure=\"GotFocus\")\n"
            "a.FormIsActive -> True\n"
            "a.FormIsActive -> False\n");
}

TEST(HostCaret, OneCaretForTheWholeScreen) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "caret\n"
                       "call a.ShowCaret\n"
                       "caret\n"
                       "call b.ShowCaret\n"
                       "call a.HideCaret\n"
                       "caret\n"
                       "call b.HideCaret\n"
                       "caret\n"
                       "remove b\n"
                       "caret\n"),
            "caret none\n"
            "caret a 3 2 1 13 shown\n"
            "caret b 3 2 1 13 shown\n"
            "caret b 3 2 1 13 hidden\n"
            "event b.Called(Procedure=\"Terminate\")\n"
            "caret none\n");
}

TEST(HostKeyboard, TypingSendsTheKeysOfEachCharacter) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n", "type p \"aZ,+\\u{E7}!\"\n"),
            "event p.KeyDown(KeyCode=65, Shift=0)\n"
            "event p.KeyPress(KeyAscii=97)\n"
            "event p.KeyUp(KeyCode=65, Shift=0)\n"
            "event p.KeyDown(KeyCode=90, Shift=1)\n"
            "event p.KeyPress(KeyAscii=90)\n"
            "event p.KeyUp(KeyCode=90, Shift=1)\n"
            "event p.KeyDown(KeyCode=188, Shift=0)\n"
            "event p.KeyPress(KeyAscii=44)\n"
            "event p.KeyUp(KeyCode=188, Shift=0)\n"
            "event p.KeyDown(KeyCode=187, Shift=1)\n"
            "event p.KeyPress(KeyAscii=43)\n"
            "event p.KeyUp(KeyCode=187, Shift=1)\n"
            "event p.KeyDown(KeyCode=186, Shift=0)\n"
            "event p.KeyPress(KeyAscii=231)\n"
            "event p.KeyUp(KeyCode=186, Shift=0)\n"
            "event p.KeyDown(KeyCode=0, Shift=1)\n"
            "event p.KeyPress(KeyAscii=33)\n"
            "event p.KeyUp(KeyCode=0, Shift=1)\n");
}

TEST(HostKeyboard, KeyStrokesForCharacters) {
  EXPECT_EQ(KeyStrokeFor(U'7'), (KeyStroke{55, 0}));
  EXPECT_EQ(KeyStrokeFor(U'q'), (KeyStroke{81, 0}));
  EXPECT_EQ(KeyStrokeFor(U'Q'), (KeyStroke{81, 1}));
  EXPECT_EQ(KeyStrokeFor(U'-'), (KeyStroke{189, 0}));
  EXPECT_EQ(KeyStrokeFor(U'.'), (KeyStroke{190, 0}));
  EXPECT_EQ(KeyStrokeFor(U' '), (KeyStroke{32, 0}));
  EXPECT_EQ(KeyStrokeFor(U'\u00C7'), (KeyStroke{186, 1}));
  EXPECT_EQ(KeyStrokeFor(U'?'), (KeyStroke{0, 1}));
  EXPECT_EQ(KeyStrokeFor(U'/'), (KeyStroke{0, 0}));
  EXPECT_EQ(KeyStrokeFor(U'\u20AC'), (KeyStroke{0, 0}));
}

TEST(HostKeyboard, OnlyKeysThatTypeACharacterSendKeyPress) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "key p 13\n"
                       "key p 46 2\n"
                       "keypress p 120\n"),
            "event p.KeyDown(KeyCode=13, Shift=0)\n"
            "event p.KeyPress(KeyAscii=13)\n"
            "event p.KeyUp(KeyCode=13, Shift=0)\n"
            "event p.KeyDown(KeyCode=46, Shift=2)\n"
            "event p.KeyUp(KeyCode=46, Shift=2)\n"
            "event p.KeyPress(KeyAscii=120)\n");
}

TEST(HostKeyboard, AltAndAnAccessKeyGoToTheFirstControlOwningIt) {
  // Both probes own "p"; the first in tab order answers, whoever is named.
  EXPECT_EQ(TraceAfter(kTwoProbes, "key b 80 4\nkey b 80 5\n"),
            "event a.Called(Procedure=\"AccessKeyPress 112\")\n"
            "event a.Called(Procedure=\"AccessKeyPress 80\")\n");
}

TEST(HostMouse, ClickAndDoubleClickSequences) {
  EXPECT_EQ(TraceAfter("new KestuProbe p 0 0 1200 480\n",
                       "click p\n"
                       "dblclick p\n"
                       "click p 2 1 15 30\n"),
            "event p.MouseDown(Button=1, Shift=0, x=600, y=240)\n"
            "event p.MouseUp(Button=1, Shift=0, x=600, y=240)\n"
            "event p.Click\n"
            "event p.MouseDown(Button=1, Shift=0, x=600, y=240)\n"
            "event p.MouseUp(Button=1, Shift=0, x=600, y=240)\n"
            "event p.Click\n"
            "event p.DblClick\n"
            "event p.MouseUp(Button=1, Shift=0, x=600, y=240)\n"
            "event p.MouseDown(Button=2, Shift=1, x=15, y=30)\n"
            "event p.MouseUp(Button=2, Shift=1, x=15, y=30)\n"
            "event p.Click\n");
}

TEST(HostMouse, TheCaptureHolderGetsTheMouseInItsOwnTwips) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "call a.Capture\n"
                       "mouse b move 1 0 30 45.5\n"
                       "call a.Release\n"
                       "mouse b move 0 0 30 45.5\n"),
            "event a.MouseMove(Button=1, Shift=0, x=1530, y=45.5)\n"
            "event b.MouseMove(Button=0, Shift=0, x=30, y=45.5)\n");
}

TEST(HostMouse, TheScreenCursorFollowsTheMouseAndWindowsKnowTheirPlace) {
  EXPECT_EQ(TraceAfter(kTwoProbes,
                       "mouse b move 0 0 30 45\n"
                       "call b.Where\n"
                       "cursor 7 9\n"
                       "call a.Where\n"),
            "event b.MouseMove(Button=0, Shift=0, x=30, y=45)\n"
            "b.Where -> \"100,0,180,32 102,3\"\n"
            "a.Where -> \"0,0,80,32 7,9\"\n");
}

TEST(HostHandlers, AHandlerSetsByReferenceArgumentsAfterTheTraceShowsThem) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "on p.KeyPress set KeyAscii=0 once\n"
                       "keypress p 97\n"
                       "get p.LastKey\n"
                       "keypress p 98\n"
                       "get p.LastKey\n"),
            "event p.KeyPress(KeyAscii=97)\n"
            "p.LastKey = 0\n"
            "event p.KeyPress(KeyAscii=98)\n"
            "p.LastKey = 98\n");
}

TEST(HostHandlers, AValueThatDoesNotFitIsAnErrorAndTheEventGoesOn) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "on p.KeyPress set KeyAscii=70000\n"
                       "on p.keypress set keyascii=\"A\"\n"
                       "keypress p 97\n"
                       "get p.LastKey\n"),
            "event p.KeyPress(KeyAscii=97)\n"
            "error 6 Overflow\n"
            "error 13 Type mismatch\n"
            "p.LastKey = 97\n");
}

TEST(HostHandlers, ColourArgumentsPrintAsColours) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "set p.Color 0x80000005\n"
                       "on p.Colored set Color=255\n"
                       "call p.RaiseColored\n"
                       "get p.Color\n"),
            "notify p.Color\n"
            "event p.Colored(Color=0x80000005)\n"
            "p.Color = 0x000000FF\n");
}

TEST(HostHandlers, ArgumentsPassedByValueCannotBeSet) {
  const ScriptResult r = RunScript(
      "new KestuProbe p\n"
      "on p.Called set Procedure=\"x\"\n"
      "echo not reached\n");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, "test.kss:2: argument 'Procedure' is passed by value\n");
  EXPECT_EQ(r.out.find("not reached"), std::string::npos);
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

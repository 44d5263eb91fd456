#include "apps/cli/TerminalText.h"

#include <gtest/gtest.h>

#include "host/base/Exception.h"

namespace kk {
namespace {

std::string Shown(TStringView iText) { return ToUtf8(ForTerminal(iText)); }

TEST(ForTerminal, PlainTextStaysAsItIs) {
  EXPECT_EQ(Shown(u"Tischlampe \"Luna\" – 49,90 €"), "Tischlampe \"Luna\" – 49,90 €");
}

TEST(ForTerminal, EscapeSequencesGoAsAWhole) {
  EXPECT_EQ(Shown(u"a\u001B[31mrot\u001B[0mb"), "arotb");
  EXPECT_EQ(Shown(u"\u001B]0;Titel\u0007Name"), "Name");
  EXPECT_EQ(Shown(u"\u001B]8;;http://x\u001B\\Name\u001B]8;;\u001B\\"), "Name");
  EXPECT_EQ(Shown(u"\u001BcName"), "Name");
  EXPECT_EQ(Shown(u"\u009B2JName"), "Name");
  EXPECT_EQ(Shown(u"\u001BP1;2qDaten\u009CName"), "Name");
}

TEST(ForTerminal, AnEscapeSequenceThatIsCutOffTakesNothingElse) {
  EXPECT_EQ(Shown(u"Name\u001B"), "Name");
  EXPECT_EQ(Shown(u"Name\u001B["), "Name");
  EXPECT_EQ(Shown(u"Name\u001B[12;"), "Name");
  EXPECT_EQ(Shown(u"Name\u001B]0;Titel"), "Name");
  EXPECT_EQ(Shown(u"a\u001B]0;b\u001B[1mc"), "ac");
  EXPECT_EQ(Shown(u"a\u001B[12;üb"), "aüb");
  EXPECT_EQ(Shown(u"a\u001Büb"), "aüb");
}

TEST(ForTerminal, LineBreaksAndTabsBecomeABlank) {
  EXPECT_EQ(Shown(u"eins\r\nzwei\ndrei\rvier\tfünf\u2028sechs"), "eins zwei drei vier fünf sechs");
}

TEST(ForTerminal, OtherControlCharactersGo) {
  EXPECT_EQ(Shown(u"a\u0007b\u0008c\u007Fd\u0001e"), "abcde");
  EXPECT_EQ(Shown(TString(u"a\0b", 3)), "ab");
}

TEST(ForTerminal, MarksThatTurnTheDirectionGo) {
  EXPECT_EQ(Shown(u"a\u202Eb\u2066c\u2069d\u200Ee\u061Cf"), "abcdef");
}

TEST(ForTerminal, AnExceptionIsOneLine) {
  EXPECT_EQ(ToUtf8(ForTerminal(Exception(u"Erste Zeile\r\nzweite \u001B[1mZeile"))),
            "Erste Zeile zweite Zeile");
}

TEST(Counted, TakesTheSingularForOneAlone) {
  EXPECT_EQ(Counted(1, u"Kategorie", u"Kategorien"), u"1 Kategorie");
  EXPECT_EQ(Counted(0, u"Kategorie", u"Kategorien"), u"0 Kategorien");
  EXPECT_EQ(Counted(2, u"Kategorie", u"Kategorien"), u"2 Kategorien");
}

}  // namespace
}  // namespace kk

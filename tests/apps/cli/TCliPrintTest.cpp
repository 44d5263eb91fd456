#include "apps/cli/TCliPrint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliCommands.h"
#include "tests/support/TFakePrinting.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

struct TCliPrintTest : testing::Test {
  TCliPrintTest() { World.Start(); }
  bool Run(TStringView iCategory) { return Print(iCategory, File); }
  bool Print(TStringView iCategory, const TString& iFile) {
    const TCliArguments call =
        TCliArguments::Parse({u"print", u"--category", TString(iCategory), u"--pdf", iFile});
    return TCliCommands::Run(World.Context, call);
  }
  static std::string Refusal(const std::vector<TString>& iWords) {
    try {
      TCliArguments::Parse(iWords);
    } catch (const ECliUsage& e) {
      return ToUtf8(e.Message() + u" | " + e.Hint());
    }
    return "";
  }

  TTempFolder Folder;
  TString File = Folder.File(u"Küche.pdf");
  TCliWorld World;
};

TEST_F(TCliPrintTest, WritesTheCategoryAsAPdf) {
  World.List().Item(u"Küche", u"Topf");
  EXPECT_TRUE(Run(u"küche"));
  EXPECT_THAT(Folder.Read(u"Küche.pdf"), StartsWith("%PDF-"));
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Gedruckt: \"Küche\" in " + ToUtf8(File)));
  EXPECT_THAT(World.List().Calls, ElementsAre("PrintCategory Küche"));
}

TEST_F(TCliPrintTest, AsksNobodyEvenInTheWindowsProcess) {
  TFakePrinting window;
  World.List().Item(u"Küche", u"Topf");
  EXPECT_TRUE(Run(u"Küche"));
  EXPECT_TRUE(window.Contents.empty());
  EXPECT_EQ(&Printing(), &window);
}

TEST_F(TCliPrintTest, NothingToPrintLeavesTheFileAsItWas) {
  World.List().Category(u"Leer");
  EXPECT_FALSE(Run(u"Leer"));
  EXPECT_FALSE(Folder.Has(u"Küche.pdf"));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre("In der Kategorie \"Leer\" gibt es nichts zu drucken."));
}

TEST_F(TCliPrintTest, AnUnknownCategoryIsAWrongCall) {
  EXPECT_THROW(Run(u"Fehlt"), ECliUsage);
  EXPECT_THAT(World.List().Calls, IsEmpty());
}

TEST_F(TCliPrintTest, AFileThatCannotBeWrittenIsTold) {
  World.List().Item(u"Küche", u"Topf");
  try {
    Print(u"Küche", Folder.File(u"fehlt/Küche.pdf"));
    FAIL();
  } catch (const Exception& e) {
    EXPECT_THAT(ToUtf8(e.Message()), StartsWith("Das PDF wurde nicht geschrieben: "));
  }
}

TEST_F(TCliPrintTest, ChangesNothingAndNeedsTheList) {
  const TCliArguments call =
      TCliArguments::Parse({u"print", u"--category", u"Küche", u"--pdf", u"a.pdf"});
  EXPECT_TRUE(TCliCommands::NeedsList(call));
  EXPECT_FALSE(TCliCommands::ChangesList(call));
}

TEST_F(TCliPrintTest, WantsACategoryAndAFile) {
  const char* const right = "Richtig wäre: kaufkobolde-cli print --category NAME --pdf DATEI";
  EXPECT_EQ(Refusal({u"print", u"--pdf", u"a.pdf"}),
            std::string("Es fehlt --category NAME. | ") + right);
  EXPECT_EQ(Refusal({u"print", u"--category", u"Küche"}),
            std::string("Es fehlt --pdf DATEI. | ") + right);
  EXPECT_EQ(Refusal({u"print", u"--category", u"Küche", u"--pdf", u" "}),
            std::string("Es fehlt --pdf DATEI. | ") + right);
  EXPECT_THAT(Refusal({u"list", u"--pdf", u"a.pdf"}), HasSubstr("kennt die Option --pdf nicht"));
}

}  // namespace
}  // namespace kk

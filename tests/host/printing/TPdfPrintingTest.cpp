#include "host/printing/TPdfPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "host/base/Exception.h"
#include "host/controls/TPrintDialog.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct TPdfPrintingTest : testing::Test {
  void PrintOne() {
    Printing.CreateJob({u"Küche", u"heute", u"Laden", {u"A", u"B", u"C", u"D"}, {}, {{u"Topf"}}})
        ->Print(1, 1);
  }
  /// A program of the test's in place of the product's.
  void Replace(const std::string& iScript) {
    Options.Program = Folder.Path() + "/program";
    std::ofstream(Options.Program) << "#!/bin/sh\n" << iScript << "\n";
    chmod(Options.Program.c_str(), 0755);
  }
  std::string Failure() {
    try {
      Printing.WriteTo(File, Stop.get_token(), Options);
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return "";
  }

  TTempFolder Folder;
  TString File = Folder.File(u"Küche.pdf");
  std::stop_source Stop;
  TPdfOptions Options{std::string(KK_BIN_DIR) + "/kaufkobolde-print"};
  TPdfPrinting Printing;
};

TEST_F(TPdfPrintingTest, KeepsWhatIsPrintedAndAsksNobody) {
  TPrintDialog dialog;
  EXPECT_TRUE(Printing.ShowPrintDialog(dialog));
  const auto job = Printing.CreateJob({u"Küche", {}, {}, {}, {}, {}});
  EXPECT_EQ(job->CalculatePageCount(), 1);
  EXPECT_TRUE(Printing.Contents().empty());
  job->Print(1, 1);
  ASSERT_EQ(Printing.Contents().size(), 1u);
  EXPECT_EQ(Printing.Contents()[0].Title, u"Küche");
}

TEST_F(TPdfPrintingTest, TheProgramWritesThePdf) {
  PrintOne();
  EXPECT_EQ(Failure(), "");
  EXPECT_THAT(Folder.Read(u"Küche.pdf"), StartsWith("%PDF-"));
}

TEST_F(TPdfPrintingTest, TheProgramGetsThePathAndTheLists) {
  Replace("cat > \"$1\"");
  PrintOne();
  EXPECT_EQ(Failure(), "");
  EXPECT_THAT(Folder.Read(u"Küche.pdf"), HasSubstr("\"title\":\"Küche\""));
}

TEST_F(TPdfPrintingTest, ALargeListDoesNotBlock) {
  Replace("cat > \"$1\"");
  const TString name(5000, u'x');
  Printing.CreateJob({name, {}, {}, {}, {}, std::vector(400, std::vector{name})})->Print(1, 1);
  EXPECT_EQ(Failure(), "");
  EXPECT_GT(Folder.Read(u"Küche.pdf").size(), 2000000u);
}

TEST_F(TPdfPrintingTest, ItsReasonIsTold) {
  Replace("echo noise >&2; echo 'kaufkobolde-print: Kein Papier' >&2; exit 1");
  EXPECT_EQ(Failure(), "Das PDF wurde nicht geschrieben: Kein Papier");
}

TEST_F(TPdfPrintingTest, AFolderThatIsNotThereIsToldByTheRealProgram) {
  PrintOne();
  File = Folder.File(u"fehlt/Küche.pdf");
  EXPECT_EQ(Failure(), "Das PDF wurde nicht geschrieben: Die Datei " + ToUtf8(File) +
                           " lässt sich nicht schreiben: Datei oder Ordner nicht gefunden");
}

TEST_F(TPdfPrintingTest, AFolderInPlaceOfTheFileIsToldByTheRealProgram) {
  PrintOne();
  File = FromUtf8(Folder.Path());
  EXPECT_THAT(Failure(), HasSubstr("lässt sich nicht schreiben: Ist ein Ordner"));
}

TEST_F(TPdfPrintingTest, NothingToPrintIsToldAndLeavesTheOldFile) {
  Folder.Write(u"Küche.pdf", "alt");
  EXPECT_EQ(Failure(), "Das PDF wurde nicht geschrieben: Es gibt keine Seite zu drucken");
  EXPECT_EQ(Folder.Read(u"Küche.pdf"), "alt");
}

TEST_F(TPdfPrintingTest, AProgramThatIsKilledLeavesTheOldFile) {
  Folder.Write(u"Küche.pdf", "alt");
  Replace("kill -KILL $$");
  PrintOne();
  EXPECT_THAT(Failure(), HasSubstr("abgebrochen (Signal 9)"));
  EXPECT_EQ(Folder.Read(u"Küche.pdf"), "alt");
}

TEST_F(TPdfPrintingTest, APathStartsInTheCurrentFolder) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(Folder.Path());
  File = u"Küche.pdf";
  Replace("echo \"kaufkobolde-print: $1\" >&2; exit 1");
  EXPECT_EQ(Failure(), "Das PDF wurde nicht geschrieben: " + Folder.Path() + "/Küche.pdf");
  std::filesystem::current_path(before);
}

TEST_F(TPdfPrintingTest, OneLineOfTheReasonIsToldWithoutControlCharacters) {
  Replace(
      "printf 'kaufkobolde-print: alt\\nkaufkobolde-print: Kein\\033[1m Papier\\nmehr' >&2; exit "
      "1");
  EXPECT_EQ(Failure(), "Das PDF wurde nicht geschrieben: Kein[1m Papier");
}

TEST_F(TPdfPrintingTest, AnEndWithoutAReasonIsToldToo) {
  Replace("exit 3");
  EXPECT_THAT(Failure(), HasSubstr("nennt keinen Grund"));
}

TEST_F(TPdfPrintingTest, ACrashIsTold) {
  Replace("kill -SEGV $$");
  EXPECT_THAT(Failure(), HasSubstr("abgebrochen (Signal 11)"));
}

TEST_F(TPdfPrintingTest, AProgramThatIsNotThereIsTold) {
  Options.Program = "/nirgends/program";
  EXPECT_THAT(Failure(), HasSubstr("lässt sich nicht starten: Datei oder Ordner nicht gefunden"));
  Options.Program = Folder.Path() + "/text";
  Folder.Write(u"text", "kein Programm");
  EXPECT_THAT(Failure(), HasSubstr("lässt sich nicht starten: Zugriff verweigert"));
  chmod(Options.Program.c_str(), 0755);
  EXPECT_THAT(Failure(), HasSubstr("lässt sich nicht starten: Ist kein Programm"));
}

TEST_F(TPdfPrintingTest, ABadFileNameIsTold) {
  File = {};
  EXPECT_THAT(Failure(), HasSubstr("Der Dateiname ist ungültig"));
  File = TString(u"a\0b", 3);
  EXPECT_THAT(Failure(), HasSubstr("Der Dateiname ist ungültig"));
}

TEST_F(TPdfPrintingTest, AProgramThatHangsIsKilled) {
  Replace("exec sleep 1000");
  Options.Deadline = std::chrono::milliseconds(100);
  EXPECT_THAT(Failure(), HasSubstr("wird nicht fertig"));
}

TEST_F(TPdfPrintingTest, TheUserCanGiveItUp) {
  Replace("exec sleep 1000");
  Stop.request_stop();
  EXPECT_THAT(Failure(), HasSubstr("Abgebrochen"));
}

}  // namespace
}  // namespace kk

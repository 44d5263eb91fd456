#include "apps/desktop/print/PrintFile.h"

#include <gmock/gmock.h>

#include <sstream>

#include "TPrintWorld.h"
#include "host/printing/PrintContentJson.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class PrintFileTest : public TPrintWorld {
 protected:
  int Run(const std::vector<std::string>& iArguments, const std::string& iInput) {
    std::istringstream input(iInput);
    return PrintFile(iArguments, input, Errors);
  }
  std::string Path() const { return Folder.Path() + "/Küche.pdf"; }
  std::ostringstream Errors;
};

TEST_F(PrintFileTest, WritesAllListsIntoOneFile) {
  EXPECT_EQ(Run({Path()}, PrintContentsToJson({List(100), List(1)})), 0);
  const TPdfReader pdf(Path());
  EXPECT_EQ(pdf.PageCount(), TPrintLayout(List(100)).PageCount() + 1);
  EXPECT_THAT(pdf.Text(), HasSubstr("Artikel Nr. 100"));
  EXPECT_EQ(Errors.str(), "");
}

TEST_F(PrintFileTest, WantsOnePath) {
  EXPECT_EQ(Run({}, "{}"), 1);
  EXPECT_EQ(Run({"a", "b"}, "{}"), 1);
  EXPECT_THAT(Errors.str(), StartsWith("kaufkobolde-print: Aufruf"));
}

TEST_F(PrintFileTest, TellsWhatIsWrongInOneLine) {
  EXPECT_EQ(Run({Path()}, "[\n"), 1);
  EXPECT_THAT(Errors.str(), StartsWith("kaufkobolde-print: Der Auftrag zum Drucken ist "));
  EXPECT_EQ(std::ranges::count(Errors.str(), '\n'), 1);
  EXPECT_FALSE(Folder.Has(u"Küche.pdf"));
}

TEST_F(PrintFileTest, ListsWithoutAnyAreNoFile) {
  EXPECT_EQ(Run({Path()}, "{\"lists\": []}"), 1);
  EXPECT_FALSE(Folder.Has(u"Küche.pdf"));
}

TEST_F(PrintFileTest, AFolderThatIsNotThereIsTold) {
  EXPECT_EQ(Run({Folder.Path() + "/fehlt/a.pdf"}, PrintContentsToJson({List(1)})), 1);
  EXPECT_THAT(Errors.str(), StartsWith("kaufkobolde-print: "));
}

}  // namespace
}  // namespace kk

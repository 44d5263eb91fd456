#include "tests/support/TStrictReaders.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "host/common/TFileHelper.h"

namespace kk {

namespace {

constexpr char cReadXml[] = R"(
import sys, xml.etree.ElementTree as tree, zipfile
name = sys.argv[1]
if zipfile.is_zipfile(name):
    archive = zipfile.ZipFile(name)
    documents = [archive.read(entry) for entry in archive.namelist()
                 if entry in ('categories', 'remind') or entry.startswith('items')]
    assert len(documents) == int(sys.argv[2]), archive.namelist()
else:
    documents = [open(name, 'rb').read()]
for document in documents:
    tree.fromstring(document)
)";

}  // namespace

bool TStrictReaders::Has(const std::string& iTool) {
  return std::system(("command -v " + iTool + " >/dev/null 2>&1").c_str()) == 0;
}

int TStrictReaders::Run(const std::string& iCommand, const TString& iFileName,
                        const std::string& iRest) const {
  const std::string output = FFolder.Path() + "/output";
  const int answer = std::system(
      (iCommand + " '" + ToUtf8(iFileName) + "' " + iRest + " >'" + output + "' 2>&1").c_str());
  EXPECT_EQ(answer, 0) << ReadFileBytes(FromUtf8(output));
  return answer;
}

int TStrictReaders::Unzip(const TString& iFileName) const {
  const int answer = Run("unzip -t", iFileName);
  return answer != 0 ? answer : Run("zipinfo", iFileName);
}

int TStrictReaders::ReadXml(const TString& iFileName, int iDocuments) const {
  const TString script = FFolder.File(u"read.py");
  WriteFileAtomically(script, cReadXml);
  return Run("python3 '" + ToUtf8(script) + "'", iFileName, std::to_string(iDocuments));
}

}  // namespace kk

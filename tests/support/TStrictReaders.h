#pragma once

#include <string>

#include "tests/support/TTempFolder.h"

namespace kk {

/// Programs that know nothing of this one and forgive nothing, before what it writes. Each
/// operation answers the reader's exit code, 0 for a file without a fault, and fails the test with
/// what the reader said otherwise.
class TStrictReaders {
 public:
  /// For notes; borrowed.
  explicit TStrictReaders(const TTempFolder& iFolder) : FFolder(iFolder) {}

  /// Whether there is such a program here.
  static bool Has(const std::string& iTool);
  /// The command line with the file's name behind it, and the rest behind that.
  int Run(const std::string& iCommand, const TString& iFileName,
          const std::string& iRest = {}) const;
  /// Archives: unzip and zipinfo.
  static bool HasUnzip() { return Has("unzip") && Has("zipinfo"); }
  int Unzip(const TString& iFileName) const;
  /// XML (Python's expat): in an archive all entries but those that are named as a source's id, of
  /// which there must be so many; else the file itself.
  static bool HasXml() { return Has("python3"); }
  int ReadXml(const TString& iFileName, int iDocuments) const;

 private:
  const TTempFolder& FFolder;
};

}  // namespace kk

#pragma once

#include <vector>

#include "host/base/TString.h"

class QMimeData;

namespace kk {

/// What a user has dropped, pasted or named on the command line, from wherever it may come: names
/// of files apart from all else. Nothing is opened, fetched or run here. Main thread.
struct TDroppedText {
  /// Nothing longer is looked at.
  static constexpr size_t cMaxLength = 64 * 1024;

  TString Text;                ///< addresses or other words, one in each line
  std::vector<TString> Files;  ///< as they were named, without "file://"

  void Add(const TDroppedText& iOther);
  bool IsEmpty() const { return Text.empty() && Files.empty(); }

  /// One word: a file if it is named as one ("file:", "/", "./", "../") or if there is one.
  static TDroppedText OfWord(TStringView iWord);
  /// Addresses of files count as files; the rest of the text is taken line by line.
  static TDroppedText OfMime(const QMimeData& iData);
  /// Whether a plug-in can import the file, by its name.
  static bool IsExportFile(TStringView iFileName);

 private:
  void AddLine(TStringView iLine);
};

}  // namespace kk

#pragma once

#include "host/base/TStringList.h"
#include "host/controls/IPrinting.h"

namespace kk {

/// A list of results for the printer, laid out by the host's printing.
///
/// The lines of the rows are values, one a line, row after row. Where one row ends is not seen in
/// them: a row is as many lines as there are headers, four, until SetRows tells it otherwise. Main
/// thread.
class TKKPrint {
 public:
  /// Copies the lines. The second list has no use yet: anything but null raises Exception.
  TKKPrint(TStringView iTitle, TStringView iDate, TStringView iPlugin, TStringView iHeader1,
           TStringView iHeader2, TStringView iHeader3, TStringView iHeader4,
           const TStringList& iRows, const TStringList* iSecondList);

  /// How many lines each row has; lines behind the last row are left out, rows without a line, too.
  /// The titles are those of a row's values in order, the four headers first. Before the first call
  /// of the operations below.
  void SetRows(const std::vector<int>& iLineCounts, const TStringList& iTitles);

  /// At least 1. Raises Exception if the host can't print, as the next ones do.
  int CalculatePageCount() { return Job().CalculatePageCount(); }
  /// Prints the pages iFrom to iTo, from 1.
  void Print(int iFrom, int iTo) { Job().Print(iFrom, iTo); }
  /// What is printed, laid out on the first call.
  IPrintJob& Job();

 private:
  const std::vector<TString> FLines;
  TPrintContent FContent;
  std::unique_ptr<IPrintJob> FJob;
};

}  // namespace kk

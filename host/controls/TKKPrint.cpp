#include "host/controls/TKKPrint.h"

#include <algorithm>

#include "host/base/Exception.h"

namespace kk {

TKKPrint::TKKPrint(TStringView iTitle, TStringView iDate, TStringView iPlugin, TStringView iHeader1,
                   TStringView iHeader2, TStringView iHeader3, TStringView iHeader4,
                   const TStringList& iRows, const TStringList* iSecondList)
    : FLines(iRows.Lines()) {
  if (iSecondList != nullptr) throw Exception(u"Eine zweite Liste lässt sich nicht drucken");
  FContent.Title = iTitle;
  FContent.Date = iDate;
  FContent.Source = iPlugin;
  FContent.Headers = {TString(iHeader1), TString(iHeader2), TString(iHeader3), TString(iHeader4)};
  constexpr size_t cColumns = TPrintContent::cColumns;
  const size_t rows = (FLines.size() + cColumns - 1) / cColumns;
  SetRows(std::vector<int>(rows, static_cast<int>(cColumns)), {});
}

void TKKPrint::SetRows(const std::vector<int>& iLineCounts, const TStringList& iTitles) {
  FContent.Titles = iTitles.Lines();
  FContent.Rows.clear();
  auto line = FLines.begin();
  for (const int count : iLineCounts) {
    const auto end = line + std::clamp<ptrdiff_t>(count, 0, FLines.end() - line);
    if (line != end) FContent.Rows.emplace_back(line, end);
    line = end;
  }
}

IPrintJob& TKKPrint::Job() {
  if (!FJob) FJob = Printing().CreateJob(std::move(FContent));
  return *FJob;
}

}  // namespace kk

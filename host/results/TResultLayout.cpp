#include "host/results/TResultLayout.h"

#include <algorithm>
#include <optional>

namespace kk {

namespace {

constexpr char16_t cColumnSeparator = u'|';
constexpr char16_t cPartSeparator = u':';
constexpr char16_t cAscending = u'+';
constexpr char16_t cDescending = u'-';

struct TColumnLook {
  int Index = 0;
  int Width = 0;
  bool Visible = true;
};

int IndexOf(TStringView iId, const TResultTable& iTable) {
  TGuid id;
  return TryStringToGuid(iId, id) ? iTable.IndexOfColumn(id) : -1;
}

std::optional<TColumnLook> LookOf(TStringView iText, const TResultTable& iTable) {
  const std::vector<TString> parts = Split(iText, cPartSeparator);
  int64_t width = 0;
  if (parts.size() != 3 || !TryStrToInt(parts[1], width)) return std::nullopt;
  TColumnLook look;
  look.Index = IndexOf(parts[0], iTable);
  look.Width = static_cast<int>(
      std::clamp<int64_t>(width, TResultColumn::cMinWidth, TResultColumn::cMaxWidth));
  look.Visible = parts[2] != u"0";
  if (look.Index < 0) return std::nullopt;
  return look;
}

// The known columns in their order, in the places that known columns have now.
void MoveColumns(const std::vector<TColumnLook>& iLooks, TResultTable& ioTable) {
  std::vector<int> order = ioTable.ColumnOrder();
  const auto isKnown = [&](int iIndex) {
    return std::any_of(iLooks.begin(), iLooks.end(),
                       [&](const TColumnLook& iLook) { return iLook.Index == iIndex; });
  };
  auto look = iLooks.begin();
  for (int& index : order) {
    if (isKnown(index)) index = (look++)->Index;
  }
  for (size_t place = 0; place < order.size(); ++place) {
    ioTable.MoveColumn(order[place], static_cast<int>(place));
  }
}

}  // namespace

TString TResultLayout::TextOf(const TResultTable& iTable) {
  TString text;
  if (iTable.SortColumn() >= 0) {
    text += iTable.SortDescending() ? cDescending : cAscending;
    text += GUIDToString(iTable.Columns(iTable.SortColumn()).Id);
  }
  for (const int index : iTable.ColumnOrder()) {
    const TResultColumn& column = iTable.Columns(index);
    if (!text.empty()) text += cColumnSeparator;
    text += GUIDToString(column.Id) + cPartSeparator + IntToStr(column.Width) + cPartSeparator +
            (column.Visible ? u"1" : u"0");
  }
  return text;
}

void TResultLayout::Apply(TStringView iText, TResultTable& ioTable) {
  std::vector<TColumnLook> looks;
  for (const TString& part : Split(iText, cColumnSeparator)) {
    if (!part.empty() && (part[0] == cAscending || part[0] == cDescending)) {
      const int column = IndexOf(TStringView(part).substr(1), ioTable);
      if (column >= 0) ioTable.SetSort(column, part[0] == cDescending);
      continue;
    }
    const auto look = LookOf(part, ioTable);
    const auto isSame = [&](const TColumnLook& iOther) { return iOther.Index == look->Index; };
    if (look && std::none_of(looks.begin(), looks.end(), isSame)) looks.push_back(*look);
  }
  for (const TColumnLook& look : looks) {
    ioTable.SetColumnWidth(look.Index, look.Width);
    ioTable.SetColumnVisible(look.Index, look.Visible);
  }
  MoveColumns(looks, ioTable);
  const std::vector<int>& order = ioTable.ColumnOrder();
  const bool showsNone = std::none_of(order.begin(), order.end(),
                                      [&](int iIndex) { return ioTable.Columns(iIndex).Visible; });
  if (showsNone && !order.empty()) ioTable.SetColumnVisible(order[0], true);
}

}  // namespace kk

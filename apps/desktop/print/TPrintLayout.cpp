#include "apps/desktop/print/TPrintLayout.h"

#include <QRegularExpression>
#include <algorithm>
#include <numeric>

#include "apps/desktop/skin/QtText.h"

namespace kk {
namespace {

constexpr double Millimetres(double iValue) {
  return iValue / 25.4 * 72 * TPrintLayout::cUnitsPerPoint;
}
constexpr double Points(double iValue) { return iValue * TPrintLayout::cUnitsPerPoint; }

const QMarginsF cMargins(Millimetres(18), Millimetres(15), Millimetres(18), Millimetres(14));
constexpr double cMaxMargin = 0.25;                 // of the page's length that way
constexpr double cSmallestSide = Millimetres(148);  // A5 (ISO 216)
constexpr double cFootHeight = Millimetres(8);
constexpr double cColumnGap = Points(12);
constexpr double cRowPadding = Points(2.5);  // above a row and below it
constexpr double cHeadGap = Points(10);
constexpr double cHeaderGap = Points(3);  // below the headers' line
constexpr double cThinLine = Points(0.4);
constexpr double cThickLine = Points(0.9);
constexpr size_t cMaxTitle = 300;
constexpr size_t cMaxHeader = 60;
constexpr qsizetype cMaxUnbroken = 40;

const QColor cBlack(0, 0, 0);
const QColor cGray(90, 90, 90);
const QColor cLightGray(190, 190, 190);

QString ValueText(TStringView iText, size_t iMaxLength = TPrintLayout::cMaxValue) {
  const TString line = ToSingleLine(ReplaceAll(iText, u"\t", u" "));
  return ToQt(ShortenedText(WithoutControlCharacters(line), iMaxLength));
}

// "12", "1.299,00 €", "10,00 EUR".
bool IsNumber(const QString& iText) {
  static const QRegularExpression number(
      QStringLiteral(R"(^[-+]?\d[\d.,'\s]*(\p{Sc}|\p{Lu}{3})?$)"));
  return number.match(iText).hasMatch();
}

bool IsAddress(const QString& iText) {
  return iText.startsWith(QStringLiteral("http://"), Qt::CaseInsensitive) ||
         iText.startsWith(QStringLiteral("https://"), Qt::CaseInsensitive);
}

// A short one stays on one line.
QString TitledValue(const QString& iTitle, const QString& iValue) {
  QString text = iTitle.isEmpty() ? iValue : iTitle + QStringLiteral(": ") + iValue;
  if (iValue.size() <= cMaxUnbroken) text.replace(QLatin1Char(' '), QChar(QChar::Nbsp));
  return text;
}

using TWidths = std::array<double, TPrintContent::cColumns>;

// Columns that want no more than an even share of the room get what they want, and the others share
// the rest in the same way.
TWidths SharedWidths(const TWidths& iWanted, double iRoom) {
  std::array<size_t, TPrintContent::cColumns> order{};
  std::iota(order.begin(), order.end(), size_t{0});
  std::ranges::stable_sort(order, {}, [&](size_t i) { return iWanted[i]; });
  TWidths widths{};
  double room = iRoom;
  for (size_t i = 0; i < order.size(); ++i) {
    const double share = room / static_cast<double>(order.size() - i);
    widths[order[i]] = std::min(iWanted[order[i]], share);
    room -= widths[order[i]];
  }
  return widths;
}

double SumOf(const TWidths& iWidths) {
  return std::accumulate(iWidths.begin(), iWidths.end(), 0.0);
}

// What is left over goes to the columns of the longest values, and then to the first one, which
// names the row, so that the others stand at the right edge of the page.
void ShareRest(TWidths& ioWidths, const TWidths& iMost, double iRoom) {
  TWidths more{};
  for (size_t i = 0; i < more.size(); ++i) more[i] = iMost[i] - ioWidths[i];
  more = SharedWidths(more, iRoom - SumOf(ioWidths));
  for (size_t i = 0; i < more.size(); ++i) ioWidths[i] += more[i];
  ioWidths[0] += iRoom - SumOf(ioWidths);
}

void PaintRule(QPainter& ioPainter, QPointF iLeft, double iWidth, double iThickness,
               const QColor& iColor) {
  // A line, not a rectangle: it is at least one pixel, however small the page is shown.
  ioPainter.setPen(QPen(iColor, iThickness, Qt::SolidLine, Qt::FlatCap));
  const QPointF left = iLeft + QPointF(0, iThickness / 2);
  ioPainter.drawLine(left, left + QPointF(iWidth, 0));
}

// What nineteen of twenty values want: one that is much longer has more lines, and does not make
// the other columns narrow on all pages.
double UsualWidth(std::vector<double>& ioWidths) {
  const auto usual = ioWidths.end() - 1 - static_cast<ptrdiff_t>(ioWidths.size() / 20);
  std::ranges::nth_element(ioWidths, usual);
  return *usual;
}

}  // namespace

QPageLayout TPrintLayout::UsualPaper() {
  return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()};
}

TPrintLayout::TPrintLayout(const TPrintContent& iContent, const QPageLayout& iPaper)
    : FPaper(iPaper),
      FTitleText(15, true, cBlack),
      FHeaderText(9, true, cBlack),
      FText(9, false, cBlack),
      FSmallText(7.5, false, cGray),
      FTitle(ValueText(iContent.Title, cMaxTitle)),
      FSource(ValueText(iContent.Source, cMaxTitle)),
      FDate(ValueText(iContent.Date, cMaxTitle)) {
  FindArea();
  for (size_t i = 0; i < cColumns; ++i) FHeaders[i] = ValueText(iContent.Headers[i], cMaxHeader);
  FRows.reserve(iContent.Rows.size());
  for (const auto& row : iContent.Rows) FRows.push_back(RowOf(row, iContent.Titles));
  FindColumns();
  BreakLines();
  MakePages();
}

void TPrintLayout::FindArea() {
  const QSizeF paper = FPaper.fullRect(QPageLayout::Point).size() * cUnitsPerPoint;
  const double scale = std::max(1.0, cSmallestSide / std::min(paper.width(), paper.height()));
  FPage = QRectF(QPointF(), paper * scale);
  const QMarginsF most(FPage.width() * cMaxMargin, FPage.height() * cMaxMargin,
                       FPage.width() * cMaxMargin, FPage.height() * cMaxMargin);
  const QMarginsF chosen = FPaper.margins(QPageLayout::Point) * (cUnitsPerPoint * scale);
  FArea = FPage.marginsRemoved({std::clamp(chosen.left(), cMargins.left(), most.left()),
                                std::clamp(chosen.top(), cMargins.top(), most.top()),
                                std::clamp(chosen.right(), cMargins.right(), most.right()),
                                std::clamp(chosen.bottom(), cMargins.bottom(), most.bottom())});
}

double TPrintLayout::BodyBottom() const { return FArea.bottom() - cFootHeight; }

TPrintLayout::TRow TPrintLayout::RowOf(const std::vector<TString>& iValues,
                                       const std::vector<TString>& iTitles) {
  TRow row;
  bool hasAddress = false;
  for (size_t i = 0; i < iValues.size(); ++i) {
    const QString value = ValueText(iValues[i]);
    if (i < cColumns) {
      row.Cells[i] = value;
      continue;
    }
    if (value.isEmpty() || (IsAddress(value) && std::exchange(hasAddress, true))) continue;
    if (!row.More.isEmpty()) row.More += QStringLiteral("  ·  ");
    row.More +=
        TitledValue(i < iTitles.size() ? ValueText(iTitles[i], cMaxHeader) : QString(), value);
  }
  return row;
}

void TPrintLayout::FindColumns() {
  TWidths usual{};
  TWidths most{};
  for (size_t i = 0; i < cColumns; ++i) {
    std::vector<double> cells{FHeaderText.WidthOf(FHeaders[i])};
    bool isNumber = true;
    for (const TRow& row : FRows) {
      const QString& cell = row.Cells[i];
      if (cell.isEmpty()) continue;
      isNumber = isNumber && IsNumber(cell);
      cells.push_back(FText.WidthOf(cell));
    }
    FColumns[i].IsNumber = isNumber && cells.size() > 1;
    // A little more, so that no rounding breaks the widest one.
    most[i] = std::ranges::max(cells) + Points(1);
    const double header = cells.front();
    const double least = std::max(header, UsualWidth(cells)) + Points(1);
    usual[i] = FColumns[i].IsNumber ? most[i] : least;
  }
  const double room = FArea.width() - cColumnGap * static_cast<double>(cColumns - 1);
  TWidths widths = SharedWidths(usual, room);
  ShareRest(widths, most, room);
  double left = FArea.left();
  for (size_t i = 0; i < cColumns; ++i) {
    FColumns[i].Left = left;
    FColumns[i].Width = widths[i];
    left += FColumns[i].Width + cColumnGap;
  }
}

void TPrintLayout::BreakLines() {
  for (size_t i = 0; i < cColumns; ++i) {
    FHeaderLines = std::max(FHeaderLines, FHeaderText.LineCount(FHeaders[i], FColumns[i].Width));
  }
  for (TRow& row : FRows) {
    for (size_t i = 0; i < cColumns; ++i) {
      const double width = FColumns[i].Width;
      if (FText.WidthOf(row.Cells[i]) < width - Points(0.5)) continue;  // one line, and quickly so
      row.Lines = std::max(row.Lines, FText.LineCount(row.Cells[i], width));
    }
    if (!row.More.isEmpty()) row.MoreLines = FSmallText.LineCount(row.More, FArea.width());
  }
}

void TPrintLayout::MakePages() {
  FPages.emplace_back();
  double room = BodyBottom() - FArea.top() - HeadHeight(true);
  const auto turn = [&] {
    FPages.emplace_back();
    room = BodyBottom() - FArea.top() - HeadHeight(false);
  };
  for (size_t row = 0; row < FRows.size(); ++row) {
    if (HeightOf({row, 0, LineCount(row)}) > room && !FPages.back().empty()) turn();
    for (int line = 0; line < LineCount(row);) {
      if (line > 0) turn();
      const TSlice slice = Fitting(row, line, room);
      FPages.back().push_back(slice);
      room -= HeightOf(slice);
      line += slice.Count;
    }
  }
}

double TPrintLayout::HeadHeight(bool iFirstPage) const {
  const double headers = FHeaderLines * FHeaderText.LineHeight() + cThickLine + 2 * cHeaderGap;
  if (!iFirstPage) return FSmallText.LineHeight() + cHeadGap + headers;
  return FTitleText.LineCount(FTitle, FArea.width()) * FTitleText.LineHeight() +
         FText.LineHeight() + cHeaderGap + cHeadGap + headers;
}

double TPrintLayout::HeightOf(const TSlice& iSlice) const {
  const int inColumns = std::clamp(FRows[iSlice.Row].Lines - iSlice.First, 0, iSlice.Count);
  return inColumns * FText.LineHeight() + (iSlice.Count - inColumns) * FSmallText.LineHeight() +
         2 * cRowPadding + cThinLine;
}

TPrintLayout::TSlice TPrintLayout::Fitting(size_t iRow, int iFirst, double iHeight) const {
  TSlice slice{iRow, iFirst, LineCount(iRow) - iFirst};
  while (slice.Count > 1 && HeightOf(slice) > iHeight) --slice.Count;
  return slice;
}

void TPrintLayout::Paint(QPainter& ioPainter, const QRectF& iPaper, int iPage) const {
  const double scale = std::min(iPaper.width() / FPage.width(), iPaper.height() / FPage.height());
  const QRectF page(QPointF(), FPage.size() * scale);
  ioPainter.save();
  ioPainter.translate(iPaper.center() - page.center());
  ioPainter.scale(scale, scale);
  const bool isFirst = iPage == 1;
  PaintHead(ioPainter, isFirst);
  double top = FArea.top() + HeadHeight(isFirst);
  for (const TSlice& slice : FPages.at(static_cast<size_t>(iPage) - 1)) {
    PaintSlice(ioPainter, slice, top);
    top += HeightOf(slice);
  }
  PaintFoot(ioPainter, iPage);
  ioPainter.restore();
}

void TPrintLayout::PaintHead(QPainter& ioPainter, bool iFirstPage) const {
  const double width = FArea.width();
  double top = FArea.top();
  QString left = FSource;
  const TPrintText& text = iFirstPage ? FText : FSmallText;
  if (iFirstPage) {
    const int lines = FTitleText.LineCount(FTitle, width);
    FTitleText.Paint(ioPainter, {FArea.left(), top}, FTitle, width, {0, lines});
    top += lines * FTitleText.LineHeight() + cHeaderGap;
  } else {
    left = FTitle + QStringLiteral("  ·  ") + FSource;
  }
  const double dateWidth = std::min(text.WidthOf(FDate) + Points(1), width / 2);
  const double leftWidth = width - dateWidth - cColumnGap;
  text.Paint(ioPainter, {FArea.left(), top}, text.Elided(left, leftWidth), leftWidth, {});
  text.Paint(ioPainter, {FArea.right() - dateWidth, top}, FDate, dateWidth, {}, Qt::AlignRight);
  PaintHeaders(ioPainter, top + text.LineHeight() + cHeadGap);
}

void TPrintLayout::PaintHeaders(QPainter& ioPainter, double iTop) const {
  for (size_t i = 0; i < cColumns; ++i) {
    FHeaderText.Paint(ioPainter, {FColumns[i].Left, iTop}, FHeaders[i], FColumns[i].Width,
                      {0, FHeaderLines}, FColumns[i].IsNumber ? Qt::AlignRight : Qt::AlignLeft);
  }
  const double bottom = iTop + FHeaderLines * FHeaderText.LineHeight() + cHeaderGap;
  PaintRule(ioPainter, {FArea.left(), bottom}, FArea.width(), cThickLine, cBlack);
}

void TPrintLayout::PaintSlice(QPainter& ioPainter, const TSlice& iSlice, double iTop) const {
  const TRow& row = FRows[iSlice.Row];
  const int inColumns = std::clamp(row.Lines - iSlice.First, 0, iSlice.Count);
  double top = iTop + cRowPadding;
  for (size_t i = 0; i < cColumns && inColumns > 0; ++i) {
    FText.Paint(ioPainter, {FColumns[i].Left, top}, row.Cells[i], FColumns[i].Width,
                {iSlice.First, inColumns}, FColumns[i].IsNumber ? Qt::AlignRight : Qt::AlignLeft);
  }
  top += inColumns * FText.LineHeight();
  const int below = iSlice.Count - inColumns;
  if (below > 0) {
    const int first = std::max(0, iSlice.First - row.Lines);
    FSmallText.Paint(ioPainter, {FArea.left(), top}, row.More, FArea.width(), {first, below});
    top += below * FSmallText.LineHeight();
  }
  PaintRule(ioPainter, {FArea.left(), top + cRowPadding}, FArea.width(), cThinLine, cLightGray);
}

void TPrintLayout::PaintFoot(QPainter& ioPainter, int iPage) const {
  const QString text = ToQt(Format(u"Seite %d von %d", {iPage, PageCount()}));
  FSmallText.Paint(ioPainter, {FArea.left(), FArea.bottom() - FSmallText.LineHeight()}, text,
                   FArea.width(), {}, Qt::AlignRight);
}

}  // namespace kk

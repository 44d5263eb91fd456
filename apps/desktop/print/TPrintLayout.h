#pragma once

#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <array>
#include <vector>

#include "apps/desktop/print/TPrintText.h"
#include "host/controls/IPrinting.h"

namespace kk {

/// Content on the pages of a paper: the same pages for a page count, a preview, a printer and a
/// file. Lengths are in units of a tenth of a point. The first page has the title, source and date,
/// each later one a line of them; all have the headers above the rows, and the page's number. A row
/// stays on one page unless it is larger than a page. Columns get their widths by what stands in
/// them; the few values that are much longer than the others get what room is left. A column of
/// numbers stands right. Main thread.
///
/// A value's line breaks and tabs become blanks, its other control characters go, and of a very
/// long one (above cMaxValue characters) the beginning is printed alone. Of the addresses behind
/// the four columns (http...) only a row's first is printed: those behind it are of pictures and
/// the like.
class TPrintLayout {
 public:
  static constexpr double cUnitsPerPoint = 10;
  static constexpr size_t cMaxValue = 2000;

  /// A4, upright.
  static QPageLayout UsualPaper();

  /// The margins are those of the paper, or the usual ones where these are wider. What does not
  /// fit on a small paper is printed smaller.
  explicit TPrintLayout(const TPrintContent& iContent, const QPageLayout& iPaper = UsualPaper());

  const QPageLayout& Paper() const { return FPaper; }
  int PageCount() const { return static_cast<int>(FPages.size()); }
  const QString& Title() const { return FTitle; }
  const QString& Source() const { return FSource; }
  /// Paints a page (1 to PageCount) on a paper of the painter's: on one of another shape than its
  /// own as large as it goes.
  void Paint(QPainter& ioPainter, const QRectF& iPaper, int iPage) const;

 private:
  static constexpr size_t cColumns = TPrintContent::cColumns;
  using TCells = std::array<QString, cColumns>;

  struct TRow {
    TCells Cells;
    QString More;  ///< what stands below the columns
    int Lines = 1;
    int MoreLines = 0;
  };
  /// Lines of a row, first those of the columns, then those below.
  struct TSlice {
    size_t Row;
    int First;
    int Count;
  };
  using TPage = std::vector<TSlice>;
  struct TColumn {
    double Left = 0;
    double Width = 0;
    bool IsNumber = false;
  };

  void FindArea();
  double BodyBottom() const;
  static TRow RowOf(const std::vector<TString>& iValues, const std::vector<TString>& iTitles);
  void FindColumns();
  void BreakLines();
  void MakePages();
  double HeadHeight(bool iFirstPage) const;
  double HeightOf(const TSlice& iSlice) const;
  int LineCount(size_t iRow) const { return FRows[iRow].Lines + FRows[iRow].MoreLines; }
  /// The lines of the row from iFirst on that there is room for; at least one.
  TSlice Fitting(size_t iRow, int iFirst, double iHeight) const;

  void PaintHead(QPainter& ioPainter, bool iFirstPage) const;
  void PaintHeaders(QPainter& ioPainter, double iTop) const;
  void PaintSlice(QPainter& ioPainter, const TSlice& iSlice, double iTop) const;
  void PaintFoot(QPainter& ioPainter, int iPage) const;

  const QPageLayout FPaper;
  QRectF FPage;
  QRectF FArea;  ///< the page without its margins
  const TPrintText FTitleText;
  const TPrintText FHeaderText;
  const TPrintText FText;
  const TPrintText FSmallText;
  QString FTitle;
  QString FSource;
  QString FDate;
  TCells FHeaders;
  int FHeaderLines = 1;
  std::vector<TRow> FRows;
  std::array<TColumn, cColumns> FColumns;
  std::vector<TPage> FPages;
};

}  // namespace kk

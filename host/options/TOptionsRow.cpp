#include "host/options/TOptionsRow.h"

namespace kk {

TOptionsRow::TOptionsRow(TPanel& ioFrame, TStringView iName, TStringView iCaption, TStringView iKey)
    : Row(&ioFrame, u"pnl" + TString(iName)),
      Label(&Row, u"lbl" + TString(iName), iCaption),
      Edit(&Row, u"edt" + TString(iName)),
      FKey(iKey) {
  Row.SetArrangement(TArrangement::arRow);
}

}  // namespace kk

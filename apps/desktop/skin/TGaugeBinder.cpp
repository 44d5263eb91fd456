#include "apps/desktop/skin/TGaugeBinder.h"

#include <algorithm>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

namespace {

// Its text as it is, without Qt's own place holders.
class TBar : public QProgressBar {
 public:
  QString text() const override { return format(); }
};

}  // namespace

TGaugeBinder::TGaugeBinder(TSkin& ioSkin, TGauge& ioGauge)
    : TBinderOf(ioSkin, ioGauge, QtOwned<TBar>()) {}

void TGaugeBinder::Render() {
  // A range without extent would be a bar that runs to and fro.
  const int maximum = std::max(Control().Maximum(), 1);
  const int progress = Control().Maximum() > 0 ? Control().Progress() : 0;
  View().setRange(0, maximum);
  View().setValue(std::clamp(progress, 0, maximum));
  View().setFormat(ToQt(Control().Text()));
  View().setTextVisible(!Control().Text().empty());
}

}  // namespace kk

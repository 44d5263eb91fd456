#include "apps/desktop/skin/TStatusBarBinder.h"

#include <QStyle>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

namespace {

// A panel keeps its place while it is empty; as wide as the text of the gauge that comes into it.
constexpr int cPanelLetters = 28;

}  // namespace

TStatusBarBinder::TStatusBarBinder(TSkin& ioSkin, TStatusBar& ioBar)
    : TBinderOf(ioSkin, ioBar, QtOwned<QFrame>()), FRow(QtOwned<QHBoxLayout>(&View())) {
  FRow->setContentsMargins(4, 2, 4, 2);
  View().setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TStatusBarBinder::Render() {
  const auto count = Control().Panels().size();
  while (FPlaces.size() < count) AddPlace();
  for (size_t panel = 0; panel < count; ++panel) RenderPlace(static_cast<int>(panel));
}

void TStatusBarBinder::AddPlace() {
  auto* place = QtOwned<QWidget>(&View());
  auto* row = QtOwned<QHBoxLayout>(place);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  auto* text = QtOwned<QLabel>(place);
  text->setTextFormat(Qt::PlainText);
  row->addWidget(text);
  FRow->addWidget(place);
  FPlaces.push_back({place, text});
  for (size_t i = 0; i < FPlaces.size(); ++i) {
    const bool isLast = i + 1 == FPlaces.size();
    FRow->setStretch(static_cast<int>(i), isLast ? 1 : 0);
    const int width = cPanelLetters * View().fontMetrics().averageCharWidth();
    FPlaces[i].Widget->setMinimumWidth(isLast ? 0 : width);
  }
  const int height = View().fontMetrics().height();
  place->setMinimumHeight(height + height / 3);
}

void TStatusBarBinder::RenderPlace(int iPanel) {
  TPlace& place = FPlaces[static_cast<size_t>(iPanel)];
  place.Text->setText(ToQt(Control().PanelText(iPanel)));
  TControl* control = Control().PanelControl(iPanel);
  QWidget* filling = control != nullptr ? Skin().WidgetOf(*control) : nullptr;
  if (filling != nullptr && filling->parentWidget() != place.Widget) {
    // It makes the bar no higher: all above would be laid out and painted anew when it comes and
    // goes, which a gauge does at each refresh.
    filling->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    place.Widget->layout()->addWidget(filling);
    filling->setVisible(control->Visible());
  }
  place.Filling = filling;
  place.Text->setVisible(filling == nullptr || !control->Visible());
}

}  // namespace kk

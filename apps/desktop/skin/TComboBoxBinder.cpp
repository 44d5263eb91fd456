#include "apps/desktop/skin/TComboBoxBinder.h"

#include <QLineEdit>
#include <algorithm>

#include "apps/desktop/skin/PassWheelOn.h"
#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

namespace {

// Entries are names that a user may have pasted: a longer one would make a window that no screen
// holds.
constexpr int cMostCharacters = 60;

class TBoundedComboBox : public QComboBox {
 public:
  QSize sizeHint() const override { return Bounded(QComboBox::sizeHint()); }
  QSize minimumSizeHint() const override { return Bounded(QComboBox::minimumSizeHint()); }

 private:
  QSize Bounded(QSize iHint) const {
    iHint.setWidth(std::min(iHint.width(), cMostCharacters * fontMetrics().averageCharWidth()));
    return iHint;
  }
};

}  // namespace

TComboBoxBinder::TComboBoxBinder(TSkin& ioSkin, TComboBox& ioList)
    : TBinderOf(ioSkin, ioList, QtOwned<TBoundedComboBox>()) {
  View().setFocusPolicy(Qt::StrongFocus);
  View().setInsertPolicy(QComboBox::NoInsert);
  OnUser(&View(), &QComboBox::activated, [this](int iIndex) { Control().Select(iIndex); });
}

bool TComboBoxBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  return PassWheelOn(View(), *iEvent) || TBinder::eventFilter(iObject, iEvent);
}

void TComboBoxBinder::Render() {
  if (View().isEditable() != Control().Editable()) {
    View().setEditable(Control().Editable());
    if (QLineEdit* const line = View().lineEdit()) {
      View().setCompleter(nullptr);  // what is typed is what is meant
      OnUser(line, &QLineEdit::textEdited,
             [this](const QString& iText) { Control().EnterText(FromQt(iText)); });
    }
  }
  RenderItems();
  RenderText();
}

void TComboBoxBinder::RenderItems() {
  const auto& items = Control().Items();
  const int count = static_cast<int>(items.size());
  bool equal = View().count() == count;
  for (int i = 0; equal && i < count; ++i) {
    equal = View().itemText(i) == ToQt(items[static_cast<size_t>(i)]);
  }
  if (equal) return;
  QStringList texts;
  for (const TString& item : items) texts << ToQt(item);
  View().clear();
  View().addItems(texts);
}

// An index that is chosen takes its text along, which may differ in case from what was typed.
void TComboBoxBinder::RenderText() {
  QLineEdit* const line = View().lineEdit();
  const int caret = line != nullptr ? line->cursorPosition() : 0;
  if (View().currentIndex() != Control().ItemIndex()) {
    View().setCurrentIndex(Control().ItemIndex());
  }
  const QString text = ToQt(Control().Text());
  if (line == nullptr) {
    View().setPlaceholderText(text);  // seen where nothing is selected
  } else if (line->text() != text) {
    line->setText(text);
    line->setCursorPosition(std::min(caret, static_cast<int>(text.size())));
  }
}

}  // namespace kk

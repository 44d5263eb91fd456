#pragma once

#include <QAbstractButton>

namespace kk {

/// A link among texts: an icon and words in the colour of links, in one line or in as many as they
/// need. Return and the space bar click it, too.
class TLinkButton final : public QAbstractButton {
 public:
  /// What stands free around its words.
  static constexpr int cMargin = 2;

  explicit TLinkButton(QWidget* iParent);

  void SetWordWrap(bool iWordWrap);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return FWordWrap; }
  int heightForWidth(int iWidth) const override;

 protected:
  void paintEvent(QPaintEvent* iEvent) override;
  void keyPressEvent(QKeyEvent* iEvent) override;
  void resizeEvent(QResizeEvent* iEvent) override;
  void enterEvent(QEnterEvent* iEvent) override;
  void leaveEvent(QEvent* iEvent) override;

 private:
  QRect TextRect(int iWidth) const;
  int TextFlags() const;

  bool FWordWrap = false;
};

}  // namespace kk

#pragma once

#include <QLabel>

namespace kk {

/// A plain text on one line, cut off with "…" where the room ends (all of it is told as a tool tip
/// then), or on as many lines as it needs; even a word that is wider than the room, such as an
/// address, is broken.
class TTextLabel : public QLabel {
 public:
  struct TLook {
    bool Bold = false;
    bool Underline = false;
    bool Link = false;  ///< the palette's link colour, a hand, and it can have the focus
    bool Centered = false;
    bool Wrapped = false;
    bool HasAccessKey = false;  ///< "&" marks it
    friend bool operator==(const TLook&, const TLook&) = default;
  };

  TTextLabel();
  void SetLook(const TLook& iLook);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return FLook.Wrapped; }
  int heightForWidth(int iWidth) const override;

 protected:
  bool event(QEvent* iEvent) override;
  void paintEvent(QPaintEvent* iEvent) override;

 private:
  int Flags() const;
  QSize SizeIn(int iWidth) const;

  TLook FLook;
};

}  // namespace kk

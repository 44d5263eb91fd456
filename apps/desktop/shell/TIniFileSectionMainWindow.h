#pragma once

#include "host/base/TGuid.h"
#include "host/common/TIniFileSectionBase.h"

namespace kk {

/// What the program remembers of its window, in the section "General". Main thread.
class TIniFileSectionMainWindow : public TKKIniFileSectionBase {
 public:
  TIniFileSectionMainWindow() : TKKIniFileSectionBase(IniFile(), u"General") {}

  /// Place and size, as QWidget::saveGeometry tells them, in Base64; empty at first.
  TString Geometry() const { return ReadString(cGeometry, {}); }
  void SetGeometry(TStringView iGeometry) { WriteString(cGeometry, iGeometry, {}); }
  /// The form id of the section that was last on the screen, in its text form; empty at first.
  TString Section() const { return ReadString(cSection, {}); }
  void SetSection(TStringView iSection) { WriteString(cSection, iSection, {}); }

 private:
  static constexpr TStringView cGeometry = u"WindowGeometry";
  static constexpr TStringView cSection = u"WindowSection";
};

}  // namespace kk

#include "host/common/TIniFileSectionBase.h"

#include <algorithm>

namespace kk {

TIniFileSectionBase::TIniFileSectionBase(TKKIniFile& ioFile, TStringView iSection)
    : FFile(ioFile), FSection(iSection) {}

TString TIniFileSectionBase::ReadString(TStringView iKey, TStringView iDefault) const {
  return FFile.ReadString(FSection, iKey, iDefault);
}

void TIniFileSectionBase::WriteString(TStringView iKey, TStringView iValue, TStringView iDefault) {
  if (iValue == iDefault) {
    FFile.DeleteKey(FSection, iKey);
  } else {
    FFile.WriteString(FSection, iKey, iValue);
  }
}

bool TIniFileSectionBase::ReadBoolean(TStringView iKey, bool iDefault) const {
  const TString text = ReadString(iKey, {});
  if (text == u"1" || SameText(text, u"true")) return true;
  if (text == u"0" || SameText(text, u"false")) return false;
  return iDefault;
}

void TIniFileSectionBase::WriteBoolean(TStringView iKey, bool iValue, bool iDefault) {
  const auto text = [](bool iFlag) { return iFlag ? u"1" : u"0"; };
  WriteString(iKey, text(iValue), text(iDefault));
}

int TIniFileSectionBase::ReadInteger(TStringView iKey, int iDefault, int iMin, int iMax) const {
  int64_t value = 0;
  if (!TryStrToInt(ReadString(iKey, {}), value)) return iDefault;
  return static_cast<int>(std::clamp<int64_t>(value, iMin, iMax));
}

void TIniFileSectionBase::WriteInteger(TStringView iKey, int iValue, int iDefault) {
  WriteString(iKey, IntToStr(iValue), IntToStr(iDefault));
}

namespace {

constexpr TStringView cScrambleMark = u"~1";
constexpr char16_t cDigits[] = u"0123456789ABCDEF";

// The mask of a position and the check sum behind the text make two equal values look different
// from a text that was shortened or changed by hand.
char16_t MaskAt(size_t iPosition) {
  return static_cast<char16_t>((iPosition + 1) * 0x9E37u ^ 0x5A3Cu);
}

char16_t CheckSum(TStringView iText) {
  char16_t sum = 0x6B6B;
  for (const char16_t unit : iText) sum = static_cast<char16_t>((sum ^ unit) * 0x0193u + 1u);
  return sum;
}

bool HexToUnit(TStringView iDigits, char16_t& oUnit) {
  oUnit = 0;
  for (const char16_t digit : iDigits) {
    const size_t value = TStringView(cDigits).find(digit);
    if (value == TStringView::npos) return false;
    oUnit = static_cast<char16_t>(oUnit * 16u + value);
  }
  return true;
}

}  // namespace

TString TKKIniFileSectionBase::Scramble(TStringView iValue) {
  TString units(iValue);
  units += CheckSum(iValue);
  TString text(cScrambleMark);
  for (size_t i = 0; i < units.size(); ++i) {
    const auto unit = static_cast<char16_t>(units[i] ^ MaskAt(i));
    for (int shift = 12; shift >= 0; shift -= 4) text += cDigits[unit >> shift & 0xF];
  }
  return text;
}

TString TKKIniFileSectionBase::Unscramble(TStringView iValue) {
  if (!StartsWith(iValue, cScrambleMark)) return {};
  iValue.remove_prefix(cScrambleMark.size());
  if (iValue.empty() || iValue.size() % 4 != 0) return {};
  TString units;
  for (size_t i = 0; i < iValue.size(); i += 4) {
    char16_t unit = 0;
    if (!HexToUnit(iValue.substr(i, 4), unit)) return {};
    units += static_cast<char16_t>(unit ^ MaskAt(i / 4));
  }
  const char16_t sum = units.back();
  units.pop_back();
  return CheckSum(units) == sum ? units : TString();
}

void TKKIniFileSectionPluginWithWindow::SaveWindowSize(int iWidth, int iHeight) {
  if (iWidth <= 0 || iHeight <= 0) return;
  File().BeginUpdate();
  WriteInteger(u"WindowWidth", iWidth, 0);
  WriteInteger(u"WindowHeight", iHeight, 0);
  File().EndUpdate();
}

TIniFileSectionCommon::TIniFileSectionCommon() : TKKIniFileSectionBase(IniFile(), u"Common") {}

TString TIniFileSectionCommon::PathToLastImExport() const {
  return ReadString(u"PathToLastImExport", {});
}

void TIniFileSectionCommon::SetPathToLastImExport(TStringView iPath) {
  WriteString(u"PathToLastImExport", iPath, {});
}

TIniFileSectionGeneral::TIniFileSectionGeneral() : TKKIniFileSectionBase(IniFile(), u"General") {}

bool TIniFileSectionGeneral::GetDelayedStart() const { return ReadBoolean(u"DelayedStart", true); }
void TIniFileSectionGeneral::SetDelayedStart(bool iDelayed) {
  WriteBoolean(u"DelayedStart", iDelayed, true);
}

bool TIniFileSectionGeneral::GetCloseToTray() const { return ReadBoolean(u"CloseToTray", false); }
void TIniFileSectionGeneral::SetCloseToTray(bool iToTray) {
  WriteBoolean(u"CloseToTray", iToTray, false);
}

bool TIniFileSectionGeneral::GetStartInTray() const { return ReadBoolean(u"StartInTray", false); }
void TIniFileSectionGeneral::SetStartInTray(bool iInTray) {
  WriteBoolean(u"StartInTray", iInTray, false);
}

}  // namespace kk

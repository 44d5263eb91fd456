#include <cstdint>
#include <cstdlib>

#include "host/common/TIniFileSectionBase.h"
#include "host/common/TIniText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  const std::string bytes(reinterpret_cast<const char*>(iData), iSize);
  kk::TIniText text(bytes);
  std::vector<kk::TString> sections = text.Sections();
  sections.emplace_back();
  // What is written over itself reads back equal, whatever its names and values are.
  for (const kk::TString& section : sections) {
    for (const auto& [key, value] : text.Values(section)) {
      if (text.Find(section, key) != value) std::abort();
      text.Set(section, key, value);
      if (kk::TIniText(text.ToBytes()).Find(section, key) != value) std::abort();
    }
  }
  const kk::TString any = kk::FromUtf8(bytes);
  text.Set(any, any, any);
  if (kk::TIniText(text.ToBytes()).Find(any, any) != any) std::abort();
  kk::TKKIniFileSectionBase::Unscramble(any);
  const kk::TString hidden = kk::TKKIniFileSectionBase::Scramble(any);
  if (kk::TKKIniFileSectionBase::Unscramble(hidden) != any) std::abort();
  return 0;
}

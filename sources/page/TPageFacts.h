#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sources/page/THtmlTree.h"
#include "sources/page/TPageAddress.h"

namespace kk {

/// What a page says about itself, by which its own product is told from the others on it.
class TPageFacts {
 public:
  /// iAddresses: under which it was asked for and found; the last one is where it lies.
  TPageFacts(const THtmlTree& iTree, const std::vector<TPageAddress>& iAddresses);

  /// What references on the page are relative to.
  const TPageAddress& Base() const { return FBase; }
  /// How well a reference matches one of the page's addresses, its canonical ones included: 2 for
  /// the whole, 1 without the query, 0 for not at all.
  int MatchOf(std::string_view iReference) const;
  /// How well a name matches what the page is headed with: 2 for the same words, 1 if one contains
  /// the other, 0 for not at all.
  int NameMatch(std::string_view iName) const;
  /// The best heading; empty if there is none.
  const std::string& Title() const { return FTitle; }

  /// The content of the first <meta> with this property or name; empty if there is none.
  std::string_view Meta(std::string_view iName) const;

 private:
  void ReadHead(const THtmlTree& iTree);
  void AddCanonical(std::string_view iReference);

  TPageAddress FBase;
  std::vector<TPageAddress> FAddresses;
  std::vector<TString> FHeadings;  // reduced to letters and digits
  std::string FTitle;
  std::vector<std::pair<std::string, std::string>> FMetas;
};

/// The letters and digits of a text, case folded: what is left when two shops write one name.
TString ReducedName(std::string_view iName);

}  // namespace kk

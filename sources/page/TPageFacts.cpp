#include "sources/page/TPageFacts.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace kk {

namespace {

constexpr size_t cMaxNameBytes = 4096;
constexpr size_t cMaxHeadings = 50;
constexpr size_t cMaxMetas = 1000;
// A name with fewer letters than this is contained in anything.
constexpr size_t cMinContained = 4;

bool IsHome(const TPageAddress& iAddress) {
  const std::string_view key = iAddress.KeyWithoutQuery();
  return key.find('/', key.find("//") + 2) == key.size() - 1;
}

std::string LowerAscii(std::string_view iText) {
  std::string text(iText);
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

}  // namespace

TString ReducedName(std::string_view iName) {
  const TString name = FromUtf8(iName.substr(0, cMaxNameBytes));
  TString folded(name.size() * 3, u'\0');  // no character folds to more than three
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length =
      u_strFoldCase(folded.data(), static_cast<int32_t>(folded.size()), name.data(),
                    static_cast<int32_t>(name.size()), U_FOLD_CASE_DEFAULT, &status);
  folded.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
  TString text;
  for (size_t at = 0; at < folded.size();) {
    const size_t begin = at;
    UChar32 c = 0;
    U16_NEXT(folded.data(), at, folded.size(), c);
    if (u_isalnum(c) != 0) text.append(folded, begin, at - begin);
  }
  return text;
}

TPageFacts::TPageFacts(const THtmlTree& iTree, const std::vector<TPageAddress>& iAddresses)
    : FBase(iAddresses.back()), FAddresses(iAddresses) {
  ReadHead(iTree);
  AddCanonical(Meta("og:url"));
  for (const std::string_view title : {Meta("og:title"), std::string_view(FTitle)}) {
    if (!title.empty()) FHeadings.push_back(ReducedName(title));
  }
  if (!Meta("og:title").empty()) FTitle = Meta("og:title");
}

void TPageFacts::ReadHead(const THtmlTree& iTree) {
  bool hasBase = false;
  std::string canonical;
  for (int node = 0; node < iTree.GetCount(); ++node) {
    const std::string_view name = iTree.Name(node);
    if (name == "title" && FTitle.empty()) {
      FTitle = iTree.Text(node);
    } else if (name == "h1" && FHeadings.size() < cMaxHeadings) {
      FHeadings.push_back(ReducedName(iTree.Text(node)));
    } else if (name == "base" && !hasBase) {
      const auto base = FBase.Resolve(iTree.Attribute(node, "href"));
      hasBase = base.has_value();
      if (base) FBase = *base;
    } else if (name == "link" && LowerAscii(iTree.Attribute(node, "rel")) == "canonical") {
      canonical = iTree.Attribute(node, "href");
    } else if (name == "meta" && FMetas.size() < cMaxMetas) {
      std::string_view property = iTree.Attribute(node, "property");
      if (property.empty()) property = iTree.Attribute(node, "name");
      const std::string_view content = iTree.Attribute(node, "content");
      if (!property.empty() && !content.empty()) FMetas.emplace_back(LowerAscii(property), content);
    }
  }
  AddCanonical(canonical);
}

// Some shops call their home page the canonical form of every page; that says nothing.
void TPageFacts::AddCanonical(std::string_view iReference) {
  const auto address = FBase.Resolve(iReference);
  if (address && (!IsHome(*address) || IsHome(FAddresses.front()))) FAddresses.push_back(*address);
}

int TPageFacts::MatchOf(std::string_view iReference) const {
  // A reference within the page is true of everything on it.
  if (iReference.empty() || iReference.starts_with('#')) return 0;
  const auto address = FBase.Resolve(iReference);
  if (!address) return 0;
  int match = 0;
  for (const TPageAddress& own : FAddresses) {
    if (own == *address) return 2;
    const bool sameWithoutQuery = own.KeyWithoutQuery() == address->KeyWithoutQuery();
    if (sameWithoutQuery && !IsHome(own)) match = 1;
  }
  return match;
}

int TPageFacts::NameMatch(std::string_view iName) const {
  const TString name = ReducedName(iName);
  if (name.empty()) return 0;
  int match = 0;
  for (const TString& heading : FHeadings) {
    if (heading == name) return 2;
    const bool contained = (name.size() >= cMinContained && heading.find(name) != TString::npos) ||
                           (heading.size() >= cMinContained && name.find(heading) != TString::npos);
    if (contained) match = 1;
  }
  return match;
}

std::string_view TPageFacts::Meta(std::string_view iName) const {
  for (const auto& [name, content] : FMetas) {
    if (name == iName) return content;
  }
  return {};
}

}  // namespace kk

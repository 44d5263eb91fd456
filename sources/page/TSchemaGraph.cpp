#include "sources/page/TSchemaGraph.h"

#include <algorithm>
#include <array>

namespace kk {

bool TSchemaItem::HasType(std::string_view iType) const {
  return std::find(Types.begin(), Types.end(), iType) != Types.end();
}

bool TSchemaItem::IsEvent() const {
  return std::any_of(Types.begin(), Types.end(), [](const std::string& iType) {
    return iType.ends_with("event") || iType == "festival";
  });
}

void TSchemaItem::Add(std::string_view iProperty, TSchemaValue iValue) {
  std::string name = SchemaName(iProperty);
  if (!name.empty()) Properties.emplace_back(std::move(name), std::move(iValue));
}

std::vector<const TSchemaValue*> TSchemaItem::Values(std::string_view iProperty) const {
  std::vector<const TSchemaValue*> values;
  for (const auto& [name, value] : Properties) {
    if (name == iProperty) values.push_back(&value);
  }
  return values;
}

std::string_view TSchemaItem::Text(std::string_view iProperty) const {
  for (const auto& [name, value] : Properties) {
    if (name == iProperty && !value.Text.empty()) return value.Text;
  }
  return {};
}

TSchemaItem& TSchemaGraph::AddItem() { return FItems.emplace_back(); }

void TSchemaGraph::Shrink(size_t iCount) { FItems.resize(std::min(iCount, FItems.size())); }

void TSchemaGraph::Index() {
  FById.clear();
  FOffers.clear();
  for (const TSchemaItem& item : FItems) {
    if (!item.Id.empty() && !item.Properties.empty()) FById.emplace(item.Id, &item);
  }
  for (const TSchemaItem& item : FItems) {
    for (const TSchemaValue* offered : item.Values("itemoffered")) {
      if (offered->Item != nullptr) FOffers.emplace(&Resolve(*offered->Item), &item);
    }
  }
}

std::vector<const TSchemaItem*> TSchemaGraph::OffersOf(const TSchemaItem& iItem) const {
  std::vector<const TSchemaItem*> offers;
  const auto [begin, end] = FOffers.equal_range(&iItem);
  for (auto offer = begin; offer != end; ++offer) offers.push_back(offer->second);
  return offers;
}

const TSchemaItem& TSchemaGraph::Resolve(const TSchemaItem& iItem) const {
  if (iItem.Id.empty() || !iItem.Properties.empty()) return iItem;
  const auto hit = FById.find(iItem.Id);
  return hit == FById.end() ? iItem : *hit->second;
}

std::string SchemaName(std::string_view iName) {
  std::string name(iName);
  for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  while (!name.empty() && (name.back() == '/' || name.back() == ' ')) name.pop_back();
  std::string_view rest = name;
  constexpr std::array cPrefixes = {"https://schema.org/",
                                    "http://schema.org/",
                                    "https://www.schema.org/",
                                    "http://www.schema.org/",
                                    "//schema.org/",
                                    "schema.org/",
                                    "schema:"};
  for (const std::string_view prefix : cPrefixes) {
    if (!rest.starts_with(prefix)) continue;
    rest.remove_prefix(prefix.size());
    break;
  }
  if (rest.find_first_of(":/") != std::string_view::npos) return {};
  return std::string(rest);
}

}  // namespace kk

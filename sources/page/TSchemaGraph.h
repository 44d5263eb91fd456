#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/base/TObject.h"

namespace kk {

struct TSchemaItem;

/// One value of a property: a text or an item. UTF-8.
struct TSchemaValue {
  std::string Text;
  /// A number of JSON, in JSON's form.
  bool IsNumber = false;
  /// Written for machines (JSON, a content attribute), not the text that a reader sees.
  bool IsMachine = false;
  const TSchemaItem* Item = nullptr;
};

/// A thing with types and properties, whether it came from JSON-LD or microdata. Names are those of
/// schema.org without their address, in lower case, since pages don't agree on the case.
struct TSchemaItem {
  std::vector<std::string> Types;
  std::string Id;
  std::vector<std::pair<std::string, TSchemaValue>> Properties;
  /// Not the value of another item's property.
  bool IsTopLevel = true;

  bool HasType(std::string_view iType) const;
  /// An Event or one of its kinds: SaleEvent, MusicEvent, ...
  bool IsEvent() const;
  void Add(std::string_view iProperty, TSchemaValue iValue);
  /// All values of a property, in order.
  std::vector<const TSchemaValue*> Values(std::string_view iProperty) const;
  /// The first text of a property that has one; empty if there is none.
  std::string_view Text(std::string_view iProperty) const;
};

/// All items of one page in one syntax, in document order. Any one thread at a time.
class TSchemaGraph : public TObject {
 public:
  /// Beyond so many items and values a page is not read any further.
  static constexpr size_t cMaxItems = 50000;
  static constexpr size_t cMaxValues = 500000;

  /// The item lives as long as the graph.
  TSchemaItem& AddItem();
  const std::deque<TSchemaItem>& Items() const { return FItems; }
  /// Takes items from the end until so many are left, those of a script that turned out broken.
  void Shrink(size_t iCount);

  /// Makes the look-ups below work; after the last item was added.
  void Index();
  /// The item itself, or the one that it refers to where it is nothing but a reference.
  const TSchemaItem& Resolve(const TSchemaItem& iItem) const;
  /// The offers that name this item as what they offer.
  std::vector<const TSchemaItem*> OffersOf(const TSchemaItem& iItem) const;

 private:
  std::deque<TSchemaItem> FItems;
  std::unordered_multimap<const TSchemaItem*, const TSchemaItem*> FOffers;
  std::unordered_map<std::string_view, const TSchemaItem*> FById;
};

/// The name of a type or property of schema.org: "schema:Product", "http://schema.org/Product" and
/// "Product" are "product". Empty for names of other vocabularies.
std::string SchemaName(std::string_view iName);

}  // namespace kk

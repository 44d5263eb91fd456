#pragma once

#include <memory>
#include <optional>

#include "host/base/TGuid.h"

namespace kk {

class TLstWatchlistCategory;
class TObject;
class TWatchlistCategory;
class TWatchlistItem;

/// The look-ups by id below a node of the tree, in the time of one walk from the hit up to the
/// node. They answer what the plain scan finds first, also among objects with the same id. Only
/// this room calls them. Main thread.
///
/// An object goes in when it comes into an owning list, and out when it leaves it.
void EnterItem(TWatchlistItem& ioItem, const TGuid& iId);
void LeaveItem(TWatchlistItem& ioItem, const TGuid& iId);
void EnterCategory(TWatchlistCategory& ioCategory, const TGuid& iId);
void LeaveCategory(TWatchlistCategory& ioCategory, const TGuid& iId);

/// iNode: a category, or an owning list of categories, groups or items. Scanned are a category's
/// groups, then its child categories, each depth first. Null for none; no value if the caller has
/// to scan, because very many items share the id.
std::optional<TWatchlistItem*> FindItemBelow(const TObject& iNode, const TGuid& iId);

/// iNode: an owning list of categories. Scanned is a level, then the levels below each of its
/// categories. Null for none; no value as above.
std::optional<TWatchlistCategory*> FindCategoryBelow(const TObject& iNode, const TGuid& iId);

/// The answer of the scan where FindCategoryBelow has none; iLst is an owning list. It is kept
/// until categories come, go or change their places, so that very many look-ups for an id that very
/// many share do not take a scan each.
TWatchlistCategory* ScanForCategory(const TLstWatchlistCategory& iLst, const TGuid& iId);

/// Takes the item out of its owning list and hands it over; empty for null.
std::unique_ptr<TWatchlistItem> TakeOutItem(const TWatchlistItem* iItem);

/// True if the category, or one in which it hangs, is the node or hangs in the node.
bool HangsBelow(const TWatchlistCategory& iCategory, const TObject& iNode);

}  // namespace kk

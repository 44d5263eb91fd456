#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// "remind": sets up or deletes the reminder of an item, by the section's rules.
class TCliRemind {
 public:
  explicit TCliRemind(TCliContext& ioContext) : FContext(ioContext) {}
  /// False if the rules refuse it, or the user has left.
  bool Run(const TCliArguments& iCall);

 private:
  bool Delete(const TWatchlistItemInfo& iItem);
  bool Edit(const TWatchlistItemInfo& iItem, const TCliArguments& iCall);
  bool CanBeReminded(const TWatchlistItemInfo& iItem) const;
  std::optional<TWatchlistReminderInfo> ReminderOf(const TGuid& iItem) const;
  bool HasSms(const TGuid& iItem) const;
  bool Tell(const TWatchlistItemInfo& iItem);
  bool Fail(TStringView iText) const;

  TCliContext& FContext;
};

}  // namespace kk

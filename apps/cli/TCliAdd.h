#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliLookup.h"

namespace kk {

/// "add": takes articles into the list by their addresses, one after the other. Each one is waited
/// for before the next begins, because the list keeps the results of one add at a time.
class TCliAdd {
 public:
  explicit TCliAdd(TCliContext& ioContext) : FContext(ioContext) {}
  /// False if anything was refused or failed, or the user has interrupted.
  bool Run(const TCliArguments& iCall);

 private:
  struct TNew {
    TGuid Source;
    TIntf<ISearchResult> Result;
  };
  enum class TOutcome { Added, Refused, Interrupted };

  void CheckCategory(const TCliArguments& iCall);
  TNew Find(TStringView iAddress) const;
  TOutcome Add(const TString& iAddress, const TString& iProgress);
  bool AnswerDialog(TForm& ioForm) const;
  bool LeavesAfterQuestion();
  void PutIntoCategory(const TNew& iNew);
  TOutcome Refuse(TStringView iFormat, TStringView iAddress);

  TCliContext& FContext;
  TString FCategory;             ///< name; empty to ask
  std::optional<TGuid> FTarget;  ///< none for a new one
};

}  // namespace kk

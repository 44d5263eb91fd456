#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// The commands that change the structure of the list: "category ...", "move", "delete", "note".
/// They ask what the section would ask.
class TCliStructure {
 public:
  explicit TCliStructure(TCliContext& ioContext) : FContext(ioContext) {}
  /// True if the command is one of these. What the list refuses raises Exception.
  static bool Knows(const TCliCommandInfo& iCommand);
  /// False if the user said no.
  bool Run(const TCliArguments& iCall);

 private:
  bool AddCategory(const TCliArguments& iCall);
  bool RenameCategory(const TCliArguments& iCall);
  bool DescribeCategory(const TCliArguments& iCall);
  bool MoveCategory(const TCliArguments& iCall);
  bool DeleteCategory(const TCliArguments& iCall);
  bool MoveItems(const TCliArguments& iCall);
  bool DeleteItems(const TCliArguments& iCall);
  bool SetNote(const TCliArguments& iCall);

  bool Told(bool iDone, TStringView iText);

  TCliContext& FContext;
};

}  // namespace kk

#pragma once

#include "views/TWatchlistCommands.h"
#include "views/TWatchlistPanes.h"

namespace kk {

/// What the user can do with results: from the menu of a source's list, and by the links of the
/// explorer bar on the focused result and on the selection of the tab on show. What fails in a
/// command of a list passes on; what fails in a link is swallowed. Main thread.
class TWatchlistTabCommands : public TObject {
 public:
  /// Both are borrowed, and live longer.
  TWatchlistTabCommands(TWatchlistPanes& ioPanes, TWatchlistCommands& ioCommands)
      : FPanes(ioPanes), FCommands(ioCommands) {}

  /// Binds the tabs' commands.
  void Bind(TTabControlKK::TEvents& ioEvents);

  void DoTabUpdate(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iResults);
  void DoTabDelete(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iResults);
  void DoTabEditDescription(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iResults);
  void DoTabMove(TObject* Sender, TTab& iTab, TWatchlistCategory* iTarget,
                 const TIntf<IInterfaceList>& iResults);
  /// Changes the list.
  void DoTabReminderAdd(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& ioResults);
  /// Asks if there is a sender.
  void DoTabReminderDelete(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iResults);

  void DoClickExplorerbarRemindAdd(TObject* Sender);
  /// The same command.
  void DoClickExplorerbarRemindEdit(TObject* Sender);
  void DoClickExplorerbarRemindDelete(TObject* Sender);
  void DoClickExplorerbarDetailsUpdate(TObject* Sender);
  /// A failure passes on.
  void DoClickExplorerbarDetailsEditDescription(TObject* Sender);
  /// The image of a reminder in a list was clicked.
  void DoAdditionalColumnEditClick(TObject* Sender);

 private:
  /// iTab: whose focused result gives the note that is shown; may be null.
  void EditDescription(const TTab* iTab, const TIntf<IInterfaceList>& iResults);
  void UpdateCurrentResult();
  /// The command gets the tab on show and the selection of its list.
  template <class Command>
  void ForSelection(TStringView iPlace, Command&& iCommand);

  TWatchlistPanes& FPanes;
  TWatchlistCommands& FCommands;
};

}  // namespace kk

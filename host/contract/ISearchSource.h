#pragma once

#include "host/base/IInterfaceList.h"
#include "host/base/TDelegate.h"
#include "host/contract/IIntegrationInfo.h"
#include "host/contract/ISearchResults.h"
#include "host/contract/TBitmap.h"

namespace kk {

class TPanel;

/// A search has ended. iProblem: what went wrong, for the user; empty if nothing did. What was
/// found by then stands in the list all the same.
using TNotifySearchFinished = TDelegate<void(TObject* Sender, TStringView iProblem)>;

/// A source that finds results for what a user types, and shows them in a list of its own, beside
/// the one that it may have in the watch list. Offered by plug-ins. Main thread.
class ISearchSource : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{E3A6D1B7-2F64-4D8C-8B1C-6A0F3C9D5E28}");

  /// Caption of the source's tab.
  virtual TString GetCaption() const = 0;
  virtual TBitmap GetImage() const = 0;
  virtual TBitmap GetImageSelected() const = 0;
  /// What is to be typed for this source, as a short sentence.
  virtual TString GetPrompt() const = 0;
  /// Says to those who extend views which one this is.
  virtual TIntf<IIntegrationInfo> GetIntegrationInfo() const = 0;
  /// The panel that hosts the list; borrowed, null takes it back.
  virtual void SetContainer(TPanel* iPanel) = 0;
  /// Registers all that another plug-in's GetIntegrations returned for this view, and tells those
  /// with INotifications of the results and of each change of the selection. IExplorerBarExtender
  /// is the business of who shows the view.
  virtual void AddExtensions(const TIntf<IInterfaceList>& iExtensions) = 0;
  /// The results in the list and the user's selection among them; the same object always.
  virtual TIntf<ISearchResults> GetSearchResults() const = 0;

  /// Empties the list and begins to look for what the text says; results come into the list as they
  /// are found. The callback comes once, on the main thread, and may come before the call returns.
  /// A search that is under way is given up first, without its callback.
  virtual void Search(TStringView iText, TNotifySearchFinished iOnFinished) = 0;
  /// Gives the search up that is under way, if there is one; its callback does not come any more.
  virtual void Cancel() = 0;
  /// Told of each change of the list's selection; an empty event is none.
  virtual void SetOnSelectionChanged(TNotifyEvent iEvent) = 0;
  /// Drops the list, its results and its extensions, at the end of the program.
  virtual void ReleaseSearch() = 0;
};

}  // namespace kk

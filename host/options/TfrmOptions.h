#pragma once

#include <memory>
#include <vector>

#include "host/contract/IApplication.h"
#include "host/contract/ISettingsExtender.h"
#include "host/controls/TButton.h"
#include "host/controls/TLabel.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "host/options/TOptionsPage.h"

namespace kk {

/// The host's settings dialog "Einstellungen": the host's own pages and those of plug-ins, by their
/// captions at the left, the selected one at the right. It is made anew for each time that it is
/// shown. Main thread.
class TfrmOptions final : public TfrmKKCommonBase {
 public:
  /// Modal; true if it was ended with OK. Its pages are the host's own and those of plug-ins.
  /// iApplication shows the pop-up by which a user tries them; it may be absent.
  static bool Display(TForm* iOwner, const std::vector<TIntf<ISettingsExtender>>& iExtenders,
                      const TIntf<IApplication>& iApplication);

  /// iNodes: the pages, in the order in which they stand.
  TfrmOptions(TForm* iOwner, const std::vector<TIntf<ISettingsNode>>& iNodes);
  /// The frames are their pages' again.
  ~TfrmOptions() override;

  /// Shows the page; false if there is none with this id.
  bool SelectPage(const TGuid& iId);
  /// Null only where there is no page at all.
  TOptionsPage* SelectedPage() const { return FSelected; }

  TPanel pnlMain{this, u"pnlMain"};
  TPanel pnlList{&pnlMain, u"pnlList"};
  TVirtualStringTree vstPages{&pnlList, u"vstPages"};
  TPanel pnlRight{&pnlMain, u"pnlRight"};
  TLabel lblCaption{&pnlRight, u"lblCaption"};
  TPanel pnlPages{&pnlRight, u"pnlPages"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", u"&Abbrechen", cModalCancel};
  TButton btnApply{&pnlButtons, u"btnApply", u"Ü&bernehmen"};

 private:
  /// Validates all pages, then saves them; false if the user has to mend something first, which was
  /// said then.
  bool Apply();
  bool Validate();
  bool Save();
  void Select(TOptionsPage& ioPage);
  /// Shows the page with a message about it.
  void Complain(TOptionsPage& ioPage, TStringView iMessage, TControl* iControl);

  void btnOKClick(TObject* Sender);
  void btnApplyClick(TObject* Sender);
  void vstPagesGetText(TObject* Sender, TVirtualNode& iNode, TString& oText);
  void vstPagesFocusChanged(TObject* Sender);

  std::vector<std::unique_ptr<TOptionsPage>> FPages;
  TOptionsPage* FSelected = nullptr;
};

}  // namespace kk

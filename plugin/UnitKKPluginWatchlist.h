#pragma once

#include <memory>
#include <optional>

#include "host/base/TStringList.h"
#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/ISettingsExtender.h"
#include "host/contract/ISettingsKeys.h"
#include "host/contract/ISettingsPublisher.h"
#include "host/contract/TCommonPlugin.h"
#include "persistence/TWatchlistDataPublisher.h"
#include "plugin/TPluginIntegrationWatchlist.h"
#include "plugin/TRemindThreadSite.h"
#include "plugin/TToolbarButtonWatchlist.h"
#include "plugin/TWatchlistHandlerSite.h"
#include "views/TWatchlistAccess.h"

namespace kk {

/// The root of the watch list: the one object through which the host knows this plug-in. It turns
/// the host's calls into calls on the handler and the section's form, and answers for what stands
/// behind it: IPluginIntegration, IToolbarExtender, IPluginDataPublisher, ISettingsExtender and,
/// between Initialize and Uninitialize, IWatchlistAccess.
///
/// The constructor makes the handler, which keeps a reference to the plug-in in turn. So the host
/// calls Uninitialize also on a plug-in that was never initialised or whose Initialize failed: it
/// lets go of the handler then, and saves nothing, because nothing was loaded. After Uninitialize
/// the plug-in can't be initialised again. Main thread.
class TPluginWatchlist : public TCommonPlugin<IMultiThreadPlugin, ISearchLocationIntegration,
                                              ISettingsKeys, ISettingsPublisher> {
 public:
  TPluginWatchlist();
  ~TPluginWatchlist() override;

  // IPlugin
  TGuid GetId() const override;
  TGroupIdentification GetGroup() const override;
  TPluginAttributes GetAttributes() const override;
  TString GetSignature() const override;
  TString GetDescription() const override;
  TString GetLongDescription() const override;
  void Initialize(const TIntf<IApplication>& iApplication) override;
  void Uninitialize() override;
  void MinimizeToTray() override;
  void RestoreFromTray() override;
  void ProcessCdmLineParams(TStringView iParamsAsStr) override;

  // IMultiThreadPlugin
  int ThreadCount() const override;
  void TerminateThreads() override;

  // ISearchLocationIntegration: what the watch list adds to a view of another plug-in. Not before
  // Initialize has finished.
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override;

  // ISettingsKeys
  std::vector<TSettingsKeyInfo> GetSettingsKeys() const override;

  // ISettingsPublisher: the preferences as TSettingsTextWatchlist has them. Needs no Initialize.
  TString GetSettingsNode() const override;
  const TStringList& GetSettings() override;
  TString GetSettingsName() const override;
  void SetSettings(const TStringList& iList) override;

  TIntf<IPluginIntegration> GetIntegration() const { return FIntegration; }
  /// A new object at each call.
  TIntf<ISettingsExtender> GetSettingsExtender() const;
  /// The same object at each call.
  TIntf<IPluginDataPublisher> GetDataPublisher();
  /// The section's form; null before Initialize and after Uninitialize.
  TfrmKKWatchlist* DoGetForm(TObject* Sender);
  /// False while there is no form.
  bool DoDataPublisherImportFromFile(TObject* Sender, TStringView iFileName);
  bool DoDataPublisherImportFromKKMobile(TObject* Sender, TMemoryStream& iStream);

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  void CreateToolbarButton();
  void AddIntegrations();
  void CreateForm(const TIntf<IApplication>& iApplication);
  void SetLoaded(bool iLoaded);
  void LetGo();
  void DoToolbarButtonClick(TObject* Sender);
  bool CmdLineAddItem(TStringView iValue);
  bool CmdLineImportFromFile(TStringView iFileName);

  TIntf<IToolbarExtender> FToolbarExtender;
  TIntf<IPluginIntegration> FIntegration;
  TIntf<TWatchlistDataPublisher> FDataPublisher;
  TStringList FSettingslist;  // what GetSettings answers
  std::unique_ptr<TfrmKKWatchlist> FForm;
  TIntf<TWatchlistAccess> FAccess;
  TIntf<TToolbarButtonWatchlist> FToolbarButton;
  TWatchlistHandlerSite FHandlerSite;
  std::optional<TRemindThreadSite> FRemindThreadSite;  // between Initialize and Uninitialize
  bool FLoaded = false;
};

/// Makes the plug-in and adds it to Plugins(); does nothing while there is one.
void RegisterWatchlist();

}  // namespace kk

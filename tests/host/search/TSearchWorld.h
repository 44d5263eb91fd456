#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/contract/INotifications.h"
#include "host/contract/TCommonExplorerBarExtender.h"
#include "host/contract/TPluginIntegration.h"
#include "host/search/SearchConsts.h"
#include "host/search/TfrmSearch.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TFakeToolbar.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

/// A source to search in; the test ends its searches.
class TFakeSearchSource : public TInterfaced<ISearchSource> {
 public:
  explicit TFakeSearchSource(TStringView iName) : FName(iName) {}

  TString GetCaption() const override { return FName; }
  TBitmap GetImage() const override { return {FName + u"_IMAGE"}; }
  TBitmap GetImageSelected() const override { return {FName + u"_SELECTED"}; }
  TString GetPrompt() const override { return Prompt; }
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override { return {}; }
  void SetContainer(TPanel* iPanel) override { Container = iPanel; }
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions) override {
    if (ExtensionsFail) throw Exception(u"Erweiterung kaputt");
    Extensions.push_back(iExtensions);
    for (int i = 0; i < iExtensions->GetCount(); ++i) {
      Notifications.push_back(GetAs<INotifications>(*iExtensions, i));
      Notifications.back()->SetSearchResults(TIntf<ISearchResults>(Results));
    }
  }
  TIntf<ISearchResults> GetSearchResults() const override {
    if (ResultsFail) throw Exception(u"Liste kaputt");
    return Results;
  }
  void Search(TStringView iText, TNotifySearchFinished iOnFinished) override {
    Texts.push_back(ToUtf8(iText));
    OnFinished = iOnFinished;
    if (AnswersAtOnce) OnFinished(nullptr, u"");
    if (!SearchFailure.empty()) throw Exception(SearchFailure);
  }
  void Cancel() override {
    Calls.push_back("cancel");
    if (CancelFails) throw Exception(u"Abbruch kaputt");
  }
  void SetOnSelectionChanged(TNotifyEvent iEvent) override { OnSelectionChanged = iEvent; }
  void ReleaseSearch() override { Calls.push_back("release"); }

  void Finish(TStringView iProblem = {}) { OnFinished(nullptr, iProblem); }
  void Select(const std::vector<TIntf<ISearchResult>>& iResults) {
    Results->Select(iResults);
    for (const auto& extension : Notifications) extension->SelectionChanged();
    OnSelectionChanged(nullptr);
  }

  TString Prompt = u"Adressen, eine in jeder Zeile";
  TPanel* Container = nullptr;
  std::vector<TIntf<IInterfaceList>> Extensions;
  std::vector<TIntf<INotifications>> Notifications;
  TIntf<TFakeSearchResults> Results = MakeIntf<TFakeSearchResults>();
  std::vector<std::string> Texts;  ///< of the searches
  std::vector<std::string> Calls;
  TNotifySearchFinished OnFinished;
  TNotifyEvent OnSelectionChanged;
  bool AnswersAtOnce = false;
  bool ResultsFail = false;
  bool CancelFails = false;
  bool ExtensionsFail = false;
  TString SearchFailure;

 private:
  TString FName;
};

/// What another plug-in adds to a view: a link that is to be seen while something is selected.
class TFakeExtension : public TInterfaced<INotifications, IExplorerBarExtender> {
 public:
  TFakeExtension()
      : Link(MakeIntf<TCommonExplorerBarLink>(NewGuid(), 70, u"Artikel beobachten...")) {}

  TIntf<ISearchResults> GetSearchResults() const override { return Results; }
  void SetSearchResults(const TIntf<ISearchResults>& iResults) override { Results = iResults; }
  void SelectionChanged() override {
    ++Changes;
    ShowLink();
  }
  void Close() override {}
  void WaitFor() override {}

  void AddPanels(IExplorerBar*) override { ++PanelsAdded; }
  void DeletePanels(IExplorerBar*) override { --PanelsAdded; }
  void AddItems(const TIntf<IExplorerBarPanel>& iPanel) override {
    if (Fails) throw Exception(u"Verweis kaputt");
    if (iPanel->GetId() != cSearchPanelMoreId) return;
    iPanel->Add(Link);
    ShowLink();
  }
  void DeleteItems(const TIntf<IExplorerBarPanel>& iPanel) override { iPanel->Delete(Link); }
  void BeforeClick(const TIntf<ISearchResult>&, const TGuid&) override {}

  TIntf<ISearchResults> Results;
  TIntf<TCommonExplorerBarLink> Link;
  int Changes = 0;
  int PanelsAdded = 0;
  bool Fails = false;

 private:
  void ShowLink() { Link->SetVisible(Results && Results->GetSelectedCount() > 0); }
};

/// The list that a plug-in's GetIntegrations returns.
inline TIntf<IInterfaceList> ListOf(const TIntf<TFakeExtension>& iExtension) {
  auto list = NewInterfaceList();
  list->Add(TIntf<INotifications>(iExtension));
  return list;
}

/// The section on the screen, with one source that one plug-in extends.
class TSearchTest : public testing::Test {
 protected:
  TSearchTest() {
    Form.Initialize(TIntf<IApplication>(Host));
    Form.AddSource(TIntf<ISearchSource>(Shop), {ListOf(Extension)});
    Form.Show();
  }

  std::string Status() const { return ToUtf8(Form.sttsbr.PanelText(0)); }
  std::string Problem() const { return ToUtf8(Form.lblProblem.Caption()); }
  std::string Field() const { return ToUtf8(Form.mmText.Lines().GetText()); }
  /// The user types this and presses "Suchen".
  bool Search(TStringView iText) {
    Form.mmText.EnterText(iText);
    return Form.btnSearch.Click();
  }
  /// What the panel of further options shows.
  std::vector<std::string> More() const {
    std::vector<std::string> captions;
    for (const TKK5SkinExplorerGroup* group : Form.xplrbr.Groups()) {
      for (const auto& item : group->VisibleItems()) captions.push_back(ToUtf8(item->GetCaption()));
    }
    return captions;
  }
  /// A second source, which nobody extends.
  TIntf<TFakeSearchSource> AddAuctions() {
    const auto source = MakeIntf<TFakeSearchSource>(u"Auktionen");
    source->Prompt = u"Suchwörter";
    Form.AddSource(TIntf<ISearchSource>(source), {TIntf<IInterfaceList>()});
    return source;
  }

  TTestMainLoop Loop;
  TScriptedFormHost Forms;
  TIntf<TFakeSectionHost> Host = MakeIntf<TFakeSectionHost>();
  TIntf<TFakeSearchSource> Shop = MakeIntf<TFakeSearchSource>(u"Seiten");
  TIntf<TFakeExtension> Extension = MakeIntf<TFakeExtension>();
  TfrmSearch Form;
};

}  // namespace kk

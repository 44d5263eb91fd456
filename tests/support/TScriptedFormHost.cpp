#include "tests/support/TScriptedFormHost.h"

#include <gtest/gtest.h>

#include <chrono>

#include "host/base/TMainLoop.h"
#include "host/controls/TfrmKKCommonWait.h"

namespace kk {

namespace {

std::string Describe(const TForm& iForm) {
  std::string text = ToUtf8(iForm.Name()) + " \"" + ToUtf8(iForm.Caption()) + "\"";
  for (const TControl* child : iForm.Children()) {
    const auto* label = dynamic_cast<const TLabel*>(child);
    if (label != nullptr) text += ": " + ToUtf8(label->Caption());
  }
  return text;
}

// Windows that work by messages to themselves end within so many turns of the loop.
constexpr int cMaxTurns = 1000;

bool EndsByItself(TForm& ioForm) {
  for (int turn = 0; turn < cMaxTurns; ++turn) {
    if (ioForm.EndModalIfDone()) return true;
    if (!HasMainLoop()) return false;
    MainLoop().ProcessMessages();
  }
  return false;
}

// The work behind it runs in real time.
bool WaitFor(TfrmKKCommonWait& ioForm) {
  const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!ioForm.EndModalIfDone()) {
    if (std::chrono::steady_clock::now() > last) return false;
    MainLoop().ProcessMessages();
    if (!ioForm.IsDone()) MainLoop().WaitForMessage(1);
  }
  return true;
}

}  // namespace

TScriptedFormHost::~TScriptedFormHost() {
  SetFormHost(FBefore);
  for (const TExpected& expected : FScript) {
    ADD_FAILURE() << "a window did not come: " << expected.What;
  }
  for (const auto& dialog : FOpenDialogs) {
    ADD_FAILURE() << "a file dialog did not come: " << ToUtf8(dialog.first);
  }
}

TScriptedFormHost& TScriptedFormHost::Add(std::string iWhat, TStep iStep) {
  FScript.push_back({std::move(iWhat), std::move(iStep)});
  return *this;
}

TScriptedFormHost& TScriptedFormHost::ExpectCaption(TStringView iCaption,
                                                    std::function<void(TForm&)> iStep) {
  return Add(ToUtf8(iCaption), [caption = TString(iCaption), step = std::move(iStep)](TForm& form) {
    if (form.Caption() != caption) return false;
    step(form);
    return true;
  });
}

TScriptedFormHost& TScriptedFormHost::ExpectMessage(TStringView iText, TMsgDlgBtn iPress) {
  return Add("the message " + ToUtf8(iText), [text = TString(iText), iPress](TForm& form) {
    auto* box = dynamic_cast<TfrmMessageDlg*>(&form);
    if (box == nullptr || box->Text() != text || box->Button(iPress) == nullptr) return false;
    return box->Button(iPress)->Click();
  });
}

TScriptedFormHost& TScriptedFormHost::ExpectQuestion(TStringView iText, bool iYes) {
  return Add("the question " + ToUtf8(iText), [text = TString(iText), iYes](TForm& form) {
    auto* question = dynamic_cast<TfrmKKCommonMessageDlg*>(&form);
    if (question == nullptr || question->lblText.Caption() != text) return false;
    return (iYes ? question->btnYes : question->btnNo).Click();
  });
}

TScriptedFormHost& TScriptedFormHost::ExpectOpenDialog(TStringView iTitle, TStringView iFileName) {
  FOpenDialogs.emplace_back(iTitle, iFileName);
  return *this;
}

bool TScriptedFormHost::ShowOpenDialog(TOpenDialog& ioDialog) {
  FLastOpenDialog = ioDialog;
  if (FOpenDialogs.empty() || FOpenDialogs.front().first != ioDialog.Title) {
    ADD_FAILURE() << "nobody expected the file dialog " << ToUtf8(ioDialog.Title);
    return false;
  }
  ioDialog.FileName = FOpenDialogs.front().second;
  FOpenDialogs.pop_front();
  return !ioDialog.FileName.empty();
}

void TScriptedFormHost::ShowModal(TForm& ioForm) {
  auto* const wait = dynamic_cast<TfrmKKCommonWait*>(&ioForm);
  const bool scripted = !FScript.empty() && FScript.front().What == typeid(TfrmKKCommonWait).name();
  if (wait != nullptr && !scripted) {
    EXPECT_TRUE(WaitFor(*wait)) << "the work does not end";
    return;
  }
  ++FShownCount;
  if (FScript.empty()) {
    ADD_FAILURE() << "nobody expected " << Describe(ioForm);
  } else {
    const TExpected expected = std::move(FScript.front());
    FScript.pop_front();
    if (!expected.Step(ioForm)) {
      ADD_FAILURE() << "expected " << expected.What << ", got " << Describe(ioForm);
    } else if (wait != nullptr ? WaitFor(*wait) : EndsByItself(ioForm)) {
      return;
    } else {
      ADD_FAILURE() << "it stays open: " << Describe(ioForm);
    }
  }
  ioForm.SetModalResult(cModalCancel);
  ioForm.EndModalIfDone();
}

}  // namespace kk

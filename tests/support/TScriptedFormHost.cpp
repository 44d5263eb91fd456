#include "tests/support/TScriptedFormHost.h"

#include <gtest/gtest.h>

#include "host/base/TMainLoop.h"

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

}  // namespace

TScriptedFormHost::~TScriptedFormHost() {
  SetFormHost(FBefore);
  for (const TExpected& expected : FScript) {
    ADD_FAILURE() << "a window did not come: " << expected.What;
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

void TScriptedFormHost::ShowModal(TForm& ioForm) {
  ++FShownCount;
  if (FScript.empty()) {
    ADD_FAILURE() << "nobody expected " << Describe(ioForm);
  } else {
    const TExpected expected = std::move(FScript.front());
    FScript.pop_front();
    if (!expected.Step(ioForm)) {
      ADD_FAILURE() << "expected " << expected.What << ", got " << Describe(ioForm);
    } else if (EndsByItself(ioForm)) {
      return;
    } else {
      ADD_FAILURE() << "it stays open: " << Describe(ioForm);
    }
  }
  ioForm.SetModalResult(cModalCancel);
  ioForm.EndModalIfDone();
}

}  // namespace kk

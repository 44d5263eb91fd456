#include "host/program/THostMessage.h"

#include <array>
#include <nlohmann/json.hpp>

#include "host/base/Guard.h"

namespace kk {
namespace {

using TJson = nlohmann::json;

// By the numbers of the kinds.
constexpr std::array<const char*, 11> cKinds = {"call",      "start",     "line",     "end",
                                                "interrupt", "print",     "complain", "progress",
                                                "ask",       "asksecret", "exit"};

TString Text(const TJson& iObject, const char* iKey) {
  return FromUtf8(iObject.value(iKey, std::string()));
}

std::optional<THostMessage::TKind> KindOf(const std::string& iName) {
  for (size_t i = 0; i < cKinds.size(); ++i) {
    if (iName == cKinds[i]) return static_cast<THostMessage::TKind>(i);
  }
  return {};
}

}  // namespace

bool THostMessage::IsFirst() const { return Kind == TKind::Call || Kind == TKind::Start; }

std::string THostMessage::ToLine() const {
  TJson object = {{"kind", cKinds[static_cast<size_t>(Kind)]}};
  if (!Text.empty()) object["text"] = ToUtf8(Text);
  if (Kind == TKind::Exit) object["code"] = ExitCode;
  if (IsFirst()) {
    object["version"] = Version;
    object["folder"] = ToUtf8(Folder);
    object["interactive"] = IsInteractive;
    TJson words = TJson::array();
    for (const TString& word : Words) words.push_back(ToUtf8(word));
    object["words"] = words;
  }
  return object.dump(-1, ' ', false, TJson::error_handler_t::replace) + "\n";
}

std::optional<THostMessage> THostMessage::FromLine(std::string_view iLine) {
  std::optional<THostMessage> result;
  Guarded(u"THostMessage.FromLine", [&] {
    const TJson object = TJson::parse(iLine);
    const auto kind = KindOf(object.at("kind").get<std::string>());
    if (!kind) return;
    THostMessage message;
    message.Kind = *kind;
    message.Text = kk::Text(object, "text");
    message.Version = object.value("version", 0);
    message.Folder = kk::Text(object, "folder");
    message.IsInteractive = object.value("interactive", false);
    message.ExitCode = object.value("code", 1);
    for (const TJson& word : object.value("words", TJson::array())) {
      message.Words.push_back(FromUtf8(word.get<std::string>()));
    }
    result = message;
  });
  return result;
}

}  // namespace kk

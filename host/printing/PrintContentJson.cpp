#include "host/printing/PrintContentJson.h"

#include <nlohmann/json.hpp>

#include "host/base/Exception.h"

namespace kk {
namespace {

using TJson = nlohmann::json;

template <class T>
TJson TextsOf(const T& iTexts) {
  TJson result = TJson::array();
  for (const TString& text : iTexts) result.push_back(ToUtf8(text));
  return result;
}

TJson JsonOf(const TPrintContent& iContent) {
  TJson rows = TJson::array();
  for (const auto& row : iContent.Rows) rows.push_back(TextsOf(row));
  return {{"title", ToUtf8(iContent.Title)},    {"date", ToUtf8(iContent.Date)},
          {"source", ToUtf8(iContent.Source)},  {"headers", TextsOf(iContent.Headers)},
          {"titles", TextsOf(iContent.Titles)}, {"rows", std::move(rows)}};
}

TString Text(const TJson& iValue) { return FromUtf8(iValue.get_ref<const std::string&>()); }

std::vector<TString> Texts(const TJson& iValues) {
  std::vector<TString> result;
  for (const std::string& text : iValues.get<std::vector<std::string>>()) {
    result.push_back(FromUtf8(text));
  }
  return result;
}

TPrintContent ContentOf(const TJson& iValue) {
  TPrintContent content;
  content.Title = Text(iValue.at("title"));
  content.Date = Text(iValue.at("date"));
  content.Source = Text(iValue.at("source"));
  const std::vector<TString> headers = Texts(iValue.at("headers"));
  for (size_t i = 0; i < content.Headers.size(); ++i) content.Headers[i] = headers.at(i);
  content.Titles = Texts(iValue.at("titles"));
  for (const TJson& row : iValue.at("rows")) content.Rows.push_back(Texts(row));
  return content;
}

}  // namespace

std::string PrintContentsToJson(const std::vector<TPrintContent>& iContents) {
  TJson lists = TJson::array();
  for (const TPrintContent& content : iContents) lists.push_back(JsonOf(content));
  return TJson{{"lists", std::move(lists)}}.dump();
}

std::vector<TPrintContent> PrintContentsFromJson(std::string_view iJson) {
  try {
    std::vector<TPrintContent> contents;
    const TJson json = TJson::parse(iJson);
    for (const TJson& list : json.at("lists")) contents.push_back(ContentOf(list));
    return contents;
  } catch (const std::exception& e) {
    throw Exception(Format(u"Der Auftrag zum Drucken ist unverständlich: %s", {MessageOf(e)}));
  }
}

}  // namespace kk

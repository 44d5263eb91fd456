#include "host/printing/PrintContentJson.h"

#include <algorithm>
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

const TJson::array_t& List(const TJson& iValue) { return iValue.get_ref<const TJson::array_t&>(); }

TString Text(const TJson& iValue) { return FromUtf8(iValue.get_ref<const std::string&>()); }

std::vector<TString> Texts(const TJson& iValues) {
  std::vector<TString> result;
  for (const TJson& text : List(iValues)) result.push_back(Text(text));
  return result;
}

TPrintContent ContentOf(const TJson& iValue) {
  TPrintContent content;
  content.Title = Text(iValue.at("title"));
  content.Date = Text(iValue.at("date"));
  content.Source = Text(iValue.at("source"));
  const std::vector<TString> headers = Texts(iValue.at("headers"));
  if (headers.size() != content.Headers.size()) throw Exception(u"headers");
  std::ranges::copy(headers, content.Headers.begin());
  content.Titles = Texts(iValue.at("titles"));
  for (const TJson& row : List(iValue.at("rows"))) content.Rows.push_back(Texts(row));
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
    for (const TJson& list : List(json.at("lists"))) contents.push_back(ContentOf(list));
    return contents;
  } catch (const TJson::parse_error& e) {
    throw Exception(
        Format(u"Der Auftrag zum Drucken ist unverständlich, ab dem %d. Byte", {e.byte}));
  } catch (const std::exception&) {
    throw Exception(u"Der Auftrag zum Drucken ist unverständlich, es fehlt etwas");
  }
}

}  // namespace kk

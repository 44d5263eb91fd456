#include "sources/page/TJsonLdReader.h"

#include <nlohmann/json.hpp>

#include "sources/page/THtmlTree.h"
#include "sources/page/TJsonRepair.h"

namespace kk {

namespace {

using TJson = nlohmann::json;

// Builds items straight from the parser's events, which keep numbers as they are written and do not
// recurse. Answering false ends the parse.
class TBuilder : public nlohmann::json_sax<TJson> {
 public:
  explicit TBuilder(TSchemaGraph& ioGraph) : FGraph(ioGraph) {}

  bool null() override { return true; }
  bool boolean(bool iValue) override { return Text(iValue ? "true" : "false", false); }
  bool number_integer(number_integer_t iValue) override {
    return Text(std::to_string(iValue), true);
  }
  bool number_unsigned(number_unsigned_t iValue) override {
    return Text(std::to_string(iValue), true);
  }
  bool number_float(number_float_t, const string_t& iText) override { return Text(iText, true); }
  bool string(string_t& iText) override { return Text(iText, false); }
  bool binary(binary_t&) override { return false; }

  bool start_object(std::size_t) override {
    if (!MayGrow() || FGraph.Items().size() >= TSchemaGraph::cMaxItems) return false;
    TSchemaItem& item = FGraph.AddItem();
    item.IsTopLevel = IsTop();
    FOpen.push_back({&item, {}});
    return true;
  }
  bool key(string_t& iKey) override {
    FOpen.back().Key = iKey;
    return true;
  }
  bool end_object() override {
    TSchemaItem& item = *FOpen.back().Item;
    FOpen.pop_back();
    Attach(item);
    return true;
  }
  bool start_array(std::size_t) override {
    if (!MayGrow()) return false;
    // A list hands its values to the property that it is the value of.
    FOpen.push_back(FOpen.empty() ? TOpen{} : FOpen.back());
    return true;
  }
  bool end_array() override {
    FOpen.pop_back();
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

 private:
  struct TOpen {
    TSchemaItem* Item = nullptr;
    std::string Key;
  };

  bool MayGrow() const { return FOpen.size() < TJsonLdReader::cMaxDepth; }

  bool IsTop() const {
    if (FOpen.empty() || FOpen.back().Item == nullptr) return true;
    return FOpen.back().Key == "@graph" && FOpen.back().Item->IsTopLevel;
  }

  bool Text(const std::string& iText, bool iIsNumber) {
    if (++FValues > TSchemaGraph::cMaxValues) return false;
    if (FOpen.empty() || FOpen.back().Item == nullptr) return true;
    TSchemaItem& item = *FOpen.back().Item;
    const std::string& name = FOpen.back().Key;
    if (name == "@type" || (name == "type" && item.Types.empty())) {
      if (std::string type = SchemaName(iText); !type.empty()) item.Types.push_back(type);
    } else if (name == "@id") {
      item.Id = iText;
    } else if (!iText.empty()) {
      item.Add(name, {iText, iIsNumber, true, nullptr});
    }
    return true;
  }

  // Makes a finished object the value of its property; one that only wraps values gives them up.
  void Attach(TSchemaItem& iItem) {
    if (FOpen.empty() || FOpen.back().Item == nullptr || iItem.IsTopLevel) return;
    const std::string& name = FOpen.back().Key;
    if (name == "@context") return;
    bool isWrapping = false;
    for (const auto& [inner, value] : iItem.Properties) {
      if (inner != "@value" && inner != "@list" && inner != "@set") continue;
      isWrapping = true;
      FOpen.back().Item->Add(name, value);
    }
    if (!isWrapping) FOpen.back().Item->Add(name, {{}, false, true, &iItem});
  }

  TSchemaGraph& FGraph;
  std::vector<TOpen> FOpen;
  size_t FValues = 0;
};

}  // namespace

bool TJsonLdReader::Read(std::string_view iScript) {
  if (Parse(iScript)) return true;
  if (Parse(RepairJson(iScript))) return true;
  // Some write the script as if it were text of the page.
  return iScript.find("&quot;") != std::string_view::npos &&
         Parse(RepairJson(DecodeEntities(iScript)));
}

bool TJsonLdReader::Parse(std::string_view iJson) {
  const size_t before = FGraph.Items().size();
  TBuilder builder(FGraph);
  if (TJson::sax_parse(iJson, &builder)) return true;
  FGraph.Shrink(before);
  return false;
}

}  // namespace kk

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "host/base/Exception.h"
#include "sources/page/THtmlTree.h"
#include "sources/page/TJsonLdReader.h"
#include "sources/page/TJsonRepair.h"
#include "sources/page/TMicrodataReader.h"

namespace kk {
namespace {

// What the mended text means, written plainly; "broken" if it still is no JSON.
std::string Repaired(std::string_view iText) {
  const auto json = nlohmann::json::parse(RepairJson(iText), nullptr, false);
  return json.is_discarded() ? "broken" : json.dump();
}

TEST(RepairJson, LeavesGoodJsonAsItMeans) {
  const std::string good =
      R"({"a":[1,2.5,-3e2,true,false,null],"b":{"c":"x\"y\\z\u00e9\ud83d\ude00"}})";
  EXPECT_EQ(Repaired(good), nlohmann::json::parse(good).dump());
}

TEST(RepairJson, TakesWrappingsAndCommentsAway) {
  EXPECT_EQ(Repaired("/*<![CDATA[*/ {\"a\":1} /*]]>*/"), R"({"a":1})");
  EXPECT_EQ(Repaired("//<![CDATA[\n{\"a\":1}\n//]]>"), R"({"a":1})");
  EXPECT_EQ(Repaired("<![CDATA[ [[1]] ]]>"), "[[1]]");
  EXPECT_EQ(Repaired("<!--\n{\"a\":1}\n-->"), R"({"a":1})");
  EXPECT_EQ(Repaired("{\"a\": 1, // eins\n/* zwei */ \"b\": 2 }"), R"({"a":1,"b":2})");
  EXPECT_EQ(Repaired("{\"a\": 1};"), R"({"a":1})");
  EXPECT_EQ(Repaired("{\"a\": 1} /* offen"), R"({"a":1})");
}

TEST(RepairJson, LeavesWhatLooksLikeACommentInAString) {
  EXPECT_EQ(Repaired(R"({"url":"http://a.example/*x*/","d":"<!-- x --><b>",})"),
            R"({"d":"<!-- x --><b>","url":"http://a.example/*x*/"})");
}

TEST(RepairJson, MendsCommas) {
  EXPECT_EQ(Repaired(R"({"a":1,})"), R"({"a":1})");
  EXPECT_EQ(Repaired(R"([1,,2,])"), "[1,2]");
  EXPECT_EQ(Repaired(R"([{"a":1}{"a":2}])"), R"([{"a":1},{"a":2}])");
  EXPECT_EQ(Repaired(R"([,1])"), "[1]");
  EXPECT_EQ(Repaired(R"({"a":1}{"b":2})"), R"([{"a":1},{"b":2}])");
  EXPECT_EQ(Repaired(R"({"a":1},)"), R"({"a":1})");
}

TEST(RepairJson, MendsStrings) {
  EXPECT_EQ(Repaired("{\"a\":\"x\n\ty\"}"), R"({"a":"x\n\ty"})");
  EXPECT_EQ(Repaired(R"({"a":"18" x 3"", "b":1})"), R"({"a":"18\" x 3\"","b":1})");
  EXPECT_EQ(Repaired(R"({"a":"it\'s \x41 \u12"})"), R"({"a":"it's x41 u12"})");
  EXPECT_EQ(Repaired(R"({"a":"\ud83d x"})"), "{\"a\":\"\xEF\xBF\xBD x\"}");
  EXPECT_EQ(Repaired(R"({"a":"\ude00"})"), "{\"a\":\"\xEF\xBF\xBD\"}");
  EXPECT_EQ(Repaired("{'a':'x\"y'}"), R"({"a":"x\"y"})");
  EXPECT_EQ(Repaired("{\"a\":\"x\\\ny\"}"), R"({"a":"x\ny"})");
}

TEST(RepairJson, MendsWordsAndNumbers) {
  EXPECT_EQ(Repaired("{a: 1, b_c: NaN, d: undefined}"), R"({"a":1,"b_c":null,"d":null})");
  EXPECT_EQ(Repaired("[01, .5, 1., +2, 1e, -]"), R"(["01",".5","1.","+2","1e",null])");
  EXPECT_EQ(Repaired("[1#2]"), "[1,2]");
}

TEST(RepairJson, WhatIsCutOffStaysBroken) {
  EXPECT_EQ(Repaired(R"({"a":{"b":1)"), "broken");
  EXPECT_EQ(Repaired(R"({"a":"x)"), "broken");
  EXPECT_EQ(Repaired(R"({"a":"x\)"), "broken");
  EXPECT_EQ(Repaired(""), "broken");
  EXPECT_EQ(Repaired("null"), "null");
}

TEST(RepairJson, IsLinear) {
  std::string text = "[";
  for (int i = 0; i < 50000; ++i) text += "{'a':\"x\ny\",,}";
  const auto json = nlohmann::json::parse(RepairJson(text + "]"), nullptr, false);
  EXPECT_EQ(json.size(), 50000u);
}

// A graph in one line: "product[name=Anvil offers=offer[price=1]]".
std::string Told(const TSchemaItem& iItem) {
  std::string text;
  for (const std::string& type : iItem.Types) text += (text.empty() ? "" : "+") + type;
  if (!iItem.Id.empty()) text += "#" + iItem.Id;
  text += "[";
  for (const auto& [name, value] : iItem.Properties) {
    if (text.back() != '[') text += " ";
    text += name + "=" + (value.Item != nullptr ? Told(*value.Item) : value.Text);
  }
  return text + "]";
}

std::string Told(const TSchemaGraph& iGraph) {
  std::string text;
  for (const TSchemaItem& item : iGraph.Items()) {
    if (item.IsTopLevel) text += (text.empty() ? "" : " ") + Told(item);
  }
  return text;
}

std::string JsonLd(std::string_view iScript) {
  TSchemaGraph graph;
  TJsonLdReader(graph).Read(iScript);
  graph.Index();
  return Told(graph);
}

TEST(TJsonLdReader, ReadsTypesPropertiesAndNestedItems) {
  EXPECT_EQ(JsonLd(R"({"@context":"http://schema.org","@type":"Product","name":"Anvil",
                       "offers":[{"@type":"Offer","price":1.50}]})"),
            "product[@context=http://schema.org name=Anvil offers=offer[price=1.50]]");
}

TEST(TJsonLdReader, NamesComeInEveryShape) {
  EXPECT_EQ(JsonLd(R"({"@type":["http://schema.org/Product","schema:Book","ex:Other"],
                       "schema:Name":"A","http://schema.org/sku":"B","gr:x":"C"})"),
            "product+book[name=A sku=B]");
  EXPECT_EQ(JsonLd(R"({"type":"product","name":"A"})"), "product[name=A]");
}

TEST(TJsonLdReader, ListsAndGraphsAreFlattened) {
  EXPECT_EQ(JsonLd(R"([{"@type":"A"},[{"@type":"B"}],null,"x"])"), "a[] b[]");
  EXPECT_EQ(JsonLd(R"({"@type":"brand","@graph":[{"@type":"product","name":"A"}]})"),
            "brand[] product[name=A]");
  EXPECT_EQ(JsonLd(R"({"@type":"P","a":[["x","y"],"z"]})"), "p[a=x a=y a=z]");
  EXPECT_EQ(JsonLd(R"({"@type":"P","a":{"@value":"x","@type":"xsd:string"},"b":{"@list":[1,2]}})"),
            "p[a=x b=1 b=2]");
}

TEST(TJsonLdReader, NullAndEmptyTextsAreNoValues) {
  EXPECT_EQ(JsonLd("null"), "");
  EXPECT_EQ(JsonLd(R"({"@type":"P","a":null,"b":"","c":true,"d":-4})"), "p[c=true d=-4]");
}

TEST(TJsonLdReader, NumbersStayAsTheyAreWritten) {
  EXPECT_EQ(JsonLd(R"({"a":0.1,"b":249.990,"c":12345678901234567890123})"),
            "[a=0.1 b=249.990 c=12345678901234567890123]");
}

TEST(TJsonLdReader, ContextsAreNotItems) {
  EXPECT_EQ(JsonLd(R"({"@context":{"@vocab":"http://schema.org/","x":{"@id":"y"}},"@type":"P"})"),
            "p[]");
}

TEST(TJsonLdReader, ReferencesFindWhatTheyName) {
  TSchemaGraph graph;
  TJsonLdReader(graph).Read(R"({"@graph":[{"@type":"P","offers":{"@id":"#o"}},
                                          {"@type":"Offer","@id":"#o","price":1}]})");
  graph.Index();
  const TSchemaItem& product = graph.Items()[1];
  ASSERT_TRUE(product.HasType("p"));
  EXPECT_EQ(graph.Resolve(*product.Values("offers")[0]->Item).Text("price"), "1");
  TSchemaItem unknown;
  unknown.Id = "#nobody";
  EXPECT_EQ(&graph.Resolve(unknown), &unknown);
}

TEST(TJsonLdReader, BrokenScriptAddsNothing) {
  TSchemaGraph graph;
  TJsonLdReader reader(graph);
  EXPECT_TRUE(reader.Read(R"({"@type":"A"})"));
  EXPECT_FALSE(reader.Read(R"({"@type":"B","x":{"@type":"C")"));
  EXPECT_TRUE(reader.Read(R"({"@type":"D",})"));
  EXPECT_EQ(Told(graph), "a[] d[]");
}

TEST(TJsonLdReader, ScriptWrittenAsTextOfThePageIsRead) {
  EXPECT_EQ(JsonLd("{&quot;@type&quot;:&quot;P&quot;,&quot;name&quot;:&quot;A &amp; B&quot;}"),
            "p[name=A & B]");
}

TEST(TJsonLdReader, DeepNestingIsRefusedWithoutHarm) {
  const int depth = 300000;
  EXPECT_EQ(JsonLd(std::string(depth, '[') + std::string(depth, ']')), "");
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
  EXPECT_EQ(JsonLd(objects), "");
}

TEST(TJsonLdReader, MoreValuesThanBoundIsRefused) {
  std::string script = "[0";
  for (size_t i = 0; i <= TSchemaGraph::cMaxValues; ++i) script += ",0";
  TSchemaGraph graph;
  EXPECT_FALSE(TJsonLdReader(graph).Read(script + "]"));
  std::string items = "[{}";
  for (size_t i = 0; i <= TSchemaGraph::cMaxItems; ++i) items += ",{}";
  EXPECT_FALSE(TJsonLdReader(graph).Read(items + "]"));
  EXPECT_TRUE(graph.Items().empty());
}

std::string Microdata(const std::string& iHtml) {
  const THtmlTree tree(iHtml);
  TSchemaGraph graph;
  TMicrodataReader(tree, graph).Read();
  return Told(graph);
}

TEST(TMicrodataReader, ReadsNestedItems) {
  EXPECT_EQ(Microdata("<div itemscope itemtype='http://schema.org/Product'>"
                      "<b itemprop='name'> Big\n <i>Anvil</i> </b>"
                      "<p itemprop=offers itemscope itemtype='http://schema.org/Offer'>"
                      "<meta itemprop=price content='1239,00'></p></div>"),
            "product[name=Big Anvil offers=offer[price=1239,00]]");
}

TEST(TMicrodataReader, ValueLiesWhereTheElementHasIt) {
  EXPECT_EQ(Microdata("<div itemscope><a itemprop=url href=' /a '>x</a><img itemprop=image src=b>"
                      "<img itemprop=image src=late.png data-src=c>"
                      "<link itemprop=availability href='http://schema.org/InStock'>"
                      "<time itemprop=t datetime=2020-01-01>Neujahr</time>"
                      "<data itemprop=d value=5>fünf</data><object itemprop=o data=e></object>"
                      "<span itemprop=s content=f>g</span><a itemprop=name href=/x>Called</a>"
                      "</div>"),
            "[url=/a image=b image=c availability=http://schema.org/InStock t=2020-01-01 d=5 o=e "
            "s=f name=Called]");
}

TEST(TMicrodataReader, OnePropertyMayHaveSeveralNames) {
  EXPECT_EQ(Microdata("<div itemscope><h1 itemprop='name  headline'>A</h1></div>"),
            "[name=A headline=A]");
}

TEST(TMicrodataReader, ItemTypeWithoutItemScopeMakesAnItem) {
  EXPECT_EQ(Microdata("<div itemtype='http://schema.org/Product'>"
                      "<div itemprop=offers itemtype='http://schema.org/Offer'>"
                      "<b itemprop=price>5</b></div>"
                      "<meta itemprop=itemCondition itemtype='http://schema.org/X' content=New>"
                      "</div>"),
            "product[offers=offer[price=5] itemcondition=New]");
}

TEST(TMicrodataReader, ItemRefBringsPropertiesFromElsewhere) {
  EXPECT_EQ(Microdata("<div itemscope itemtype=Product itemref='more nobody'>"
                      "<b itemprop=name>A</b></div>"
                      "<p id=more><i itemprop=sku>1</i><u itemprop=brand itemscope>"
                      "<s itemprop=name>B</s></u></p>"),
            "product[name=A sku=1 brand=[name=B]]");
}

TEST(TMicrodataReader, ItemRefToAnElementWithinBringsNothingTwice) {
  EXPECT_EQ(Microdata("<div id=a><p itemscope itemref='b a'><i id=b itemprop=x>1</i></p></div>"),
            "[x=1]");
}

TEST(TMicrodataReader, ItemRefInCirclesEnds) {
  EXPECT_EQ(Microdata("<div id=a itemscope itemref='a b'><i itemprop=x>1</i></div>"
                      "<div id=b itemscope itemref=a><i itemprop=y>2</i></div>"),
            "[x=1] [y=2]");
  std::string many = "<p id=many>";
  for (int i = 0; i < 3000; ++i) many += "<i>x</i>";
  many += "</p>";
  for (int i = 0; i < 3000; ++i) many += "<div itemscope itemref='many'></div>";
  EXPECT_FALSE(Microdata(many).empty());
}

TEST(TMicrodataReader, TextOfAnItemElementIsItsName) {
  EXPECT_EQ(Microdata("<div itemscope><meta itemprop=seller itemscope content=ACME></div>"),
            "[seller=[name=ACME]]");
}

TEST(TMicrodataReader, MainEntityOfPageStandsAlone) {
  EXPECT_EQ(Microdata("<div itemscope itemtype=WebPage>"
                      "<div itemprop=mainEntityOfPage itemscope itemtype=Product></div></div>"),
            "webpage[mainentityofpage=product[]] product[]");
}

TEST(TMicrodataReader, PropertyOutsideOfAnyItemIsNobodys) {
  EXPECT_EQ(Microdata("<b itemprop=price>5</b>"), "");
}

TEST(THtmlTree, TextIsWhatAReaderSees) {
  const THtmlTree tree("<p>a<script>x</script><style>y</style> b<br>c<b>d</b>&nbsp;e</p>");
  for (int node = 0; node < tree.GetCount(); ++node) {
    if (tree.Name(node) != "p") continue;
    EXPECT_EQ(tree.Text(node), "a b cd e");
  }
  EXPECT_EQ(tree.Attribute(0, "id"), "");
}

TEST(THtmlTree, NestingWithoutEndIsHarmless) {
  std::string page;
  for (int i = 0; i < 200000; ++i) page += "<b>";
  THtmlLimits limits;
  limits.MaxTime = std::chrono::milliseconds(1500);
  try {
    const THtmlTree tree(page, limits);
    EXPECT_GT(tree.GetCount(), 200000);
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Die Seite ist zu umfangreich oder zu tief verschachtelt");
  }
}

TEST(THtmlTree, LimitsEndTheReading) {
  std::string page;
  for (int i = 0; i < 100000; ++i) page += "<p id=x>a</p>";
  THtmlLimits small;
  small.MaxBytes = size_t{4} << 20;
  EXPECT_THROW(THtmlTree(page, small), Exception);
  THtmlLimits late;
  late.MaxTime = std::chrono::milliseconds(-1);
  EXPECT_THROW(THtmlTree(page, late), Exception);
  const std::atomic<bool> stop{true};
  THtmlLimits stopped;
  stopped.Stop = &stop;
  EXPECT_THROW(THtmlTree(page, stopped), Exception);
}

TEST(DecodeEntities, DecodesOnceAndLeavesTags) {
  EXPECT_EQ(DecodeEntities("Elo&iacute;sa &amp;amp; <b>x</b> &#39;"), "Eloísa &amp; <b>x</b> '");
  EXPECT_EQ(DecodeEntities("plain"), "plain");
  EXPECT_EQ(DecodeEntities("a &</title> b"), "a &</title> b");
}

TEST(SchemaName, NamesOfOtherVocabulariesAreNone) {
  EXPECT_EQ(SchemaName("http://data-vocabulary.org/Product"), "");
  EXPECT_EQ(SchemaName("https://schema.org/Product/"), "product");
  EXPECT_EQ(SchemaName("og:price"), "");
}

}  // namespace
}  // namespace kk

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "host/base/Exception.h"
#include "host/common/TFastWriterBaseSimpleXML.h"
#include "host/common/TParserBaseSimpleXML.h"
#include "host/common/TSimpleXMLDocument.h"

namespace kk {
namespace {

std::string Written(const TFastWriterBaseSimpleXML& iWriter) {
  TMemoryStream stream;
  iWriter.SaveToStream(stream);
  return stream.Bytes();
}

void Load(TSimpleXMLDocument& ioDocument, std::string iBytes, bool iDecodeUTF8 = false) {
  TMemoryStream stream(std::move(iBytes));
  ioDocument.LoadFromStream(stream, iDecodeUTF8);
}

// The text of the root element of a document.
TString TextOf(const std::string& iBytes, bool iDecodeUTF8 = false) {
  TSimpleXMLDocument document;
  Load(document, iBytes, iDecodeUTF8);
  return document.GetDocumentElement().GetText();
}

std::string MessageFor(const std::string& iBytes, bool iDecodeUTF8 = false) {
  TSimpleXMLDocument document;
  try {
    Load(document, iBytes, iDecodeUTF8);
  } catch (const EConvertError& e) {
    EXPECT_FALSE(document.GetDocumentElement());
    return e.what();
  }
  return "";
}

TString ThroughWriterAndReader(TStringView iText) {
  TFastWriterBaseSimpleXML writer;
  writer.BeginNode(u"Root");
  writer.WriteString(u"Value", iText, u"");
  writer.EndNode(u"Root");
  TSimpleXMLDocument document;
  Load(document, Written(writer));
  return TParserBaseSimpleXML::GetValueAsString(document.GetDocumentElement(), u"Value");
}

// XML 1.0, production 2: what a document can hold.
TString WhatXmlCanHold(TStringView iText) {
  TString result;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char16_t c = iText[i];
    const bool pair = c >= 0xD800 && c < 0xDC00 && i + 1 < iText.size() && iText[i + 1] >= 0xDC00 &&
                      iText[i + 1] < 0xE000;
    if (pair) {
      result += c;
      result += iText[++i];
      continue;
    }
    const bool allowed =
        c == 9 || c == 10 || c == 13 || (c >= 0x20 && c < 0xD800) || (c >= 0xE000 && c < 0xFFFE);
    if (allowed) result += c;
  }
  return result;
}

std::string Utf16(TStringView iText, bool iBigEndian) {
  std::string bytes = iBigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : iText) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += iBigEndian ? high : low;
    bytes += iBigEndian ? low : high;
  }
  return bytes;
}

TEST(TFastWriterBaseSimpleXML, WritesIndentedLinesBehindAByteOrderMark) {
  TFastWriterBaseSimpleXML writer;
  writer.SetWriteDeclaration(false);
  writer.BeginNode(u"Items");
  EXPECT_EQ(writer.GetCurrentIndent(), 1);
  writer.BeginNode(u"Item");
  writer.WriteString(u"Name", u"Kanne & <Krug>", u"");
  writer.EndNode(u"Item");
  writer.EndNode(u"Items");
  EXPECT_EQ(writer.GetCurrentIndent(), 0);
  EXPECT_EQ(Written(writer),
            "\xEF\xBB\xBF<Items>\r\n"
            "  <Item>\r\n"
            "    <Name>Kanne &amp; &lt;Krug&gt;</Name>\r\n"
            "  </Item>\r\n"
            "</Items>\r\n");
}

TEST(TFastWriterBaseSimpleXML, BeginsWithADeclarationUnlessTold) {
  TFastWriterBaseSimpleXML writer;
  writer.BeginNode(u"a");
  writer.EndNode(u"a");
  EXPECT_EQ(Written(writer),
            "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<a>\r\n</a>\r\n");
}

TEST(TFastWriterBaseSimpleXML, NothingWrittenGivesAnEmptyText) {
  TFastWriterBaseSimpleXML writer;
  EXPECT_EQ(Written(writer), "");
  writer.WriteString(u"a", u"x", u"");
  writer.Clear();
  EXPECT_EQ(Written(writer), "");
}

TEST(TFastWriterBaseSimpleXML, LeavesOutAValueThatEqualsItsDefault) {
  TFastWriterBaseSimpleXML writer;
  writer.WriteString(u"a", u"x", u"x");
  writer.WriteBoolean(u"b", false, false);
  writer.WriteInteger(u"c", 5, 5);
  writer.WriteDateTime(u"d", TDateTime(), TDateTime());
  EXPECT_EQ(Written(writer), "");
}

TEST(TFastWriterBaseSimpleXML, WritesAStringListEvenIfItIsEmpty) {
  TFastWriterBaseSimpleXML writer;
  writer.SetWriteDeclaration(false);
  writer.WriteStringList(u"Description", {}, u'|');
  writer.WriteStringList(u"Description", {u"a", u"b"}, u'|');
  EXPECT_EQ(Written(writer),
            "\xEF\xBB\xBF<Description></Description>\r\n<Description>a|b</Description>\r\n");
}

TEST(TFastWriterBaseSimpleXML, RefusesToEndAnotherNodeThanTheLast) {
  TFastWriterBaseSimpleXML writer;
  EXPECT_THROW(writer.EndNode(u"a"), Exception);
  writer.BeginNode(u"a");
  writer.BeginNode(u"b");
  EXPECT_THROW(writer.EndNode(u"a"), Exception);
}

TEST(SimpleXML, EveryKindOfValueReadsBack) {
  TFastWriterBaseSimpleXML writer;
  const TDateTime time = EncodeDateTime({2026, 11, 20, 18, 30, 5, 250});
  const TGuid id = NewGuid();
  writer.BeginNode(u"R");
  writer.WriteBoolean(u"True", true, false);
  writer.WriteBoolean(u"False", false, true);
  writer.WriteInteger(u"Least", std::numeric_limits<int64_t>::min(), 0);
  writer.WriteInteger(u"Most", std::numeric_limits<int64_t>::max(), 0);
  writer.WriteDateTime(u"Time", time, TDateTime());
  writer.WriteString(u"Id", GUIDToString(id), u"");
  writer.WriteStringList(u"Lines", {u"a", u"", u" b "}, u'|');
  writer.EndNode(u"R");
  TSimpleXMLDocument document;
  Load(document, Written(writer));
  const TSimpleXMLNode root = document.GetDocumentElement();
  using P = TParserBaseSimpleXML;
  EXPECT_TRUE(P::GetValueAsBoolean(root, u"True"));
  EXPECT_FALSE(P::GetValueAsBoolean(root, u"False", true));
  EXPECT_EQ(P::GetValueAsInteger(root, u"Least"), std::numeric_limits<int64_t>::min());
  EXPECT_EQ(P::GetValueAsInteger(root, u"Most"), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(P::GetValueAsDateTime(root, u"Time"), time);
  EXPECT_EQ(P::GetValueAsGUID(root, u"Id"), id);
  TStringList lines{u"old"};
  P::GetValueAsStringList(root, u"Lines", lines, u'|');
  EXPECT_EQ(lines.Lines(), (std::vector<TString>{u"a", u"", u" b "}));
}

TEST(TParserBaseSimpleXML, AMissingChildGivesTheEmptyValueOrTheDefault) {
  TSimpleXMLDocument document;
  Load(document, "<R/>");
  const TSimpleXMLNode root = document.GetDocumentElement();
  using P = TParserBaseSimpleXML;
  EXPECT_EQ(P::GetValueAsString(root, u"x"), u"");
  EXPECT_EQ(P::GetValueAsString(root, u"x", u"sonst"), u"sonst");
  EXPECT_FALSE(P::GetValueAsBoolean(root, u"x"));
  EXPECT_TRUE(P::GetValueAsBoolean(root, u"x", true));
  EXPECT_EQ(P::GetValueAsInteger(root, u"x"), 0);
  EXPECT_EQ(P::GetValueAsInteger(root, u"x", 7), 7);
  EXPECT_EQ(P::GetValueAsDateTime(root, u"x"), TDateTime());
  EXPECT_EQ(P::GetValueAsDateTime(root, u"x", TDateTime::FromMs(5)), TDateTime::FromMs(5));
  EXPECT_EQ(P::GetValueAsGUID(root, u"x"), cEmptyGuid);
  EXPECT_EQ(P::GetAttributeAsString(root, u"x"), u"");
  TStringList lines{u"old"};
  P::GetValueAsStringList(root, u"x", lines, u'|');
  EXPECT_EQ(lines.GetCount(), 0);
}

TEST(TParserBaseSimpleXML, DamagedValuesReadAsEmpty) {
  TSimpleXMLDocument document;
  Load(document, "<R><b>ja</b><i>1x</i><d>gestern</d><g>{FC}</g><t> TRUE</t><T>TRUE</T></R>");
  const TSimpleXMLNode root = document.GetDocumentElement();
  using P = TParserBaseSimpleXML;
  EXPECT_FALSE(P::GetValueAsBoolean(root, u"b", true));
  EXPECT_EQ(P::GetValueAsInteger(root, u"i", -1), -1);
  EXPECT_EQ(P::GetValueAsDateTime(root, u"d", TDateTime::FromMs(5)), TDateTime());
  EXPECT_EQ(P::GetValueAsGUID(root, u"g"), cEmptyGuid);
  EXPECT_FALSE(P::GetValueAsBoolean(root, u"t"));
  EXPECT_TRUE(P::GetValueAsBoolean(root, u"T"));
}

TEST(TParserBaseSimpleXML, ReadsTheNodeItselfAndItsAttributes) {
  TSimpleXMLDocument document;
  Load(document, "<R a='1 &amp; 2' \xC3\xA4='u'>Text</R>");
  const TSimpleXMLNode root = document.GetDocumentElement();
  EXPECT_EQ(TParserBaseSimpleXML::GetValueAsString(root), u"Text");
  EXPECT_EQ(TParserBaseSimpleXML::GetAttributeAsString(root, u"a"), u"1 & 2");
  EXPECT_EQ(TParserBaseSimpleXML::GetAttributeAsString(root, u"ä"), u"u");
  EXPECT_EQ(TParserBaseSimpleXML::GetAttributeAsString(root, u"A"), u"");
}

class TextThatComesBackEqual : public testing::TestWithParam<TString> {};

TEST_P(TextThatComesBackEqual, ThroughWriterAndReader) {
  EXPECT_EQ(ThroughWriterAndReader(GetParam()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(SimpleXML, TextThatComesBackEqual,
                         testing::Values(u"]]>", u"<![CDATA[x]]>", u"&amp;", u"&#10;", u"<!-- -->",
                                         u"<?xml?>", u"😀 Öl ß €", u" ", u"   ", u"\t", u"\r", u"\n",
                                         u"\r\n", u" \r\n\t a \n", u"\u0085\u2028\u00A0", u"\uFEFF",
                                         u"\uFFFD", u"\U0010FFFF", u"\u007F", TString(100000, u'ä'),
                                         TString(100000, u'\n'), TString(100000, u'<')));

TEST(SimpleXML, LeavesOutOnlyWhatXmlCantHold) {
  EXPECT_EQ(ThroughWriterAndReader(TString(u"a\0b", 3)), u"ab");
  EXPECT_EQ(ThroughWriterAndReader(u"a\u0001\u001Fb\uFFFE\uFFFF"), u"ab");
  EXPECT_EQ(ThroughWriterAndReader(TString{u'a', 0xD83D}), u"a");
  EXPECT_EQ(ThroughWriterAndReader(TString{0xDE00, u'a', 0xD83D, u'b'}), u"ab");
  EXPECT_EQ(ThroughWriterAndReader(TString{0xD83D, 0xD83D, 0xDE00}), u"😀");
}

RC_GTEST_PROP(SimpleXML, AnyTextComesBackEqualButForWhatXmlCantHold,
              (const std::vector<uint16_t>& iUnits)) {
  TString text;
  for (const uint16_t unit : iUnits) {
    // Small numbers stand for what has a meaning in markup.
    constexpr TStringView cMarkup = u"<>&]['\"!-?=/ \r\n\t;#x";
    text += unit < cMarkup.size() ? cMarkup[unit] : static_cast<char16_t>(unit * 977u);
  }
  RC_ASSERT(ThroughWriterAndReader(text) == WhatXmlCanHold(text));
}

RC_GTEST_PROP(TSimpleXMLDocument, AnyBytesAreReadOrRefused,
              (const std::string& iBytes, bool iUtf8)) {
  TSimpleXMLDocument document;
  try {
    Load(document, "<a>" + iBytes + "</a>", iUtf8);
    RC_ASSERT(static_cast<bool>(document.GetDocumentElement()));
  } catch (const EConvertError&) {
    RC_ASSERT(!document.GetDocumentElement());
  }
}

TEST(TSimpleXMLDocument, WalksElementsInDocumentOrder) {
  TSimpleXMLDocument document;
  Load(document, "<R> x <a>1</a><!-- c --><b>2</b> y <a>3</a><?p i?></R>");
  const TSimpleXMLNodeList list = document.GetDocumentElement().GetChildNodes();
  ASSERT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.GetFirst().GetName(), u"a");
  EXPECT_EQ(list.GetNodes(2).GetText(), u"3");
  EXPECT_EQ(list.GetNodes(u"b").GetText(), u"2");
  EXPECT_EQ(list.FindNode(u"a"), list.GetFirst());
  EXPECT_FALSE(list.FindNode(u"B"));
  EXPECT_FALSE(list.FindNode(u"a1"));
  EXPECT_FALSE(list.FindNode(u""));
  EXPECT_FALSE(list.GetNodes(2).GetNextSibling());
  EXPECT_THROW(list.GetNodes(3), EListError);
  EXPECT_THROW(list.GetNodes(-1), EListError);
}

TEST(TSimpleXMLDocument, AnEmptyHandleAnswersEmpty) {
  const TSimpleXMLNode none;
  EXPECT_EQ(none.GetName(), u"");
  EXPECT_EQ(none.GetText(), u"");
  EXPECT_EQ(none.GetAttribute(u"a"), u"");
  EXPECT_FALSE(none.GetChildNode(u"a"));
  EXPECT_FALSE(none.GetNextSibling());
  EXPECT_EQ(none.GetChildNodes().GetCount(), 0);
}

TEST(TSimpleXMLDocument, FindsNamesBeyondAscii) {
  TSimpleXMLDocument document;
  Load(document,
       "<R><Gr\xC3\xB6\xC3\x9F"
       "e>1</Gr\xC3\xB6\xC3\x9F"
       "e></R>");
  const TSimpleXMLNode node = document.GetDocumentElement().GetChildNode(u"Größe");
  EXPECT_EQ(node.GetText(), u"1");
  EXPECT_EQ(node.GetName(), u"Größe");
}

TEST(TSimpleXMLDocument, TakesAllTextDirectlyInTheElement) {
  EXPECT_EQ(TextOf("<R>a <b>no</b> <![CDATA[<&]]> c<!-- no --> </R>"), u"a  <& c ");
}

TEST(TSimpleXMLDocument, KeepsBlanksAndTurnsBareLineBreaksIntoLineFeeds) {
  EXPECT_EQ(TextOf("<R>  </R>"), u"  ");
  EXPECT_EQ(TextOf("<R>a\r\nb\rc\n</R>"), u"a\nb\nc\n");
}

TEST(TSimpleXMLDocument, ReadsFromTheStreamsPositionOn) {
  TMemoryStream stream("junk<R>x</R>");
  stream.SetPosition(4);
  TSimpleXMLDocument document;
  document.LoadFromStream(stream, false);
  EXPECT_EQ(document.GetDocumentElement().GetText(), u"x");
}

TEST(TSimpleXMLDocument, AnEmptyStreamGivesADocumentWithoutElement) {
  for (const std::string bytes : {"", "\xEF\xBB\xBF", " \r\n", "\xFF\xFE"}) {
    TSimpleXMLDocument document;
    Load(document, "<old/>");
    Load(document, bytes);
    EXPECT_FALSE(document.GetDocumentElement());
  }
}

TEST(TSimpleXMLDocument, ReadsEveryEncodingThatAMarkOrTheDeclarationNames) {
  EXPECT_EQ(TextOf("\xEF\xBB\xBF<R>\xC3\xA4</R>"), u"ä");
  EXPECT_EQ(TextOf("<R>\xC3\xA4</R>"), u"ä");
  EXPECT_EQ(TextOf("<?xml version='1.0' encoding='iso-8859-1'?><R>\xE4</R>"), u"ä");
  EXPECT_EQ(TextOf(Utf16(u"<R>ä😀</R>", false)), u"ä😀");
  EXPECT_EQ(TextOf(Utf16(u"<R>ä😀</R>", true)), u"ä😀");
}

TEST(TSimpleXMLDocument, CountsAsUtf8WhateverItBeginsWithIfTold) {
  EXPECT_EQ(TextOf("<?xml version='1.0' encoding='iso-8859-1'?><R>\xC3\xA4</R>", true), u"ä");
  EXPECT_EQ(TextOf("\xEF\xBB\xBF<R>\xC3\xA4</R>", true), u"ä");
  EXPECT_NE(MessageFor(Utf16(u"<R>a</R>", false), true), "");
}

TEST(TSimpleXMLDocument, RefusesUtf16WithHalfACharacter) {
  EXPECT_NE(MessageFor(Utf16(u"<R/>", false) + "\n"), "");
  EXPECT_NE(MessageFor("\xFF\xFE<"), "");
}

TEST(TSimpleXMLDocument, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  EXPECT_EQ(TextOf("<R>a\xE4z</R>"), u"a\uFFFDz");
  EXPECT_EQ(TextOf(Utf16(TString(u"<R>") + char16_t(0xD83D) + u"</R>", false)), u"\uFFFD");
}

TEST(TSimpleXMLDocument, KnowsXmlsOwnEntitiesAndExpandsNoOthers) {
  EXPECT_EQ(TextOf("<R>&lt;&gt;&amp;&quot;&apos;&#228;&#xE4;&#x1F600;</R>"), u"<>&\"'ää😀");
  EXPECT_EQ(TextOf("<!DOCTYPE R [<!ENTITY e 'boom'>]><R>&e;</R>"), u"&e;");
  EXPECT_EQ(TextOf("<!DOCTYPE R [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><R>&e;</R>"), u"&e;");
}

TEST(TSimpleXMLDocument, RefusesWhatIsNoXmlAndSaysWhere) {
  EXPECT_EQ(MessageFor("<R>\n<a>\n</R>"),
            "Der Text ist kein lesbares XML: Ein Element ist nicht geschlossen (Zeile 3)");
  EXPECT_EQ(MessageFor("Hallo"),
            "Der Text ist kein lesbares XML: Neben dem obersten Element steht Text");
  EXPECT_THAT(MessageFor("<R a=></R>"), testing::HasSubstr("Ein Attribut ist fehlerhaft"));
  EXPECT_THAT(MessageFor("<R><></R>"), testing::HasSubstr("Ein Element ist fehlerhaft"));
  EXPECT_THAT(MessageFor("<R><![CDATA[</R>"), testing::HasSubstr("Der Aufbau ist fehlerhaft"));
  EXPECT_THAT(MessageFor("<R/><R/>"), testing::HasSubstr("nicht genau ein oberstes Element"));
  EXPECT_THAT(MessageFor("<?xml version='1.0'?>"),
              testing::HasSubstr("nicht genau ein oberstes Element"));
  EXPECT_THAT(MessageFor("<R/>x"), testing::HasSubstr("steht Text"));
}

TEST(TSimpleXMLDocument, EveryCutOfADocumentIsRefused) {
  const std::string whole = "<?xml version='1.0'?><R a='1'><b>&amp;<![CDATA[x]]></b><!-- --></R>";
  ASSERT_EQ(MessageFor(whole), "");
  for (size_t size = 1; size < whole.size(); ++size) {
    EXPECT_NE(MessageFor(whole.substr(0, size)), "") << size;
  }
}

TEST(TSimpleXMLDocument, RefusesNullCharactersInsteadOfReadingUpToThem) {
  EXPECT_THAT(MessageFor(std::string("<R/>\0<!-- gone -->", 18)),
              testing::HasSubstr("Null-Zeichen"));
  EXPECT_THAT(MessageFor(Utf16(TString(u"<R/>\0", 5), false)), testing::HasSubstr("Null-Zeichen"));
}

TEST(TSimpleXMLDocument, RefusesElementsNestedTooDeepWithoutOverflowingTheStack) {
  const auto nested = [](int iDepth) {
    std::string text;
    for (int i = 0; i < iDepth; ++i) text += "<a>";
    for (int i = 0; i < iDepth; ++i) text += "</a>";
    return text;
  };
  EXPECT_EQ(MessageFor(nested(TSimpleXMLDocument::cMaxDepth)), "");
  EXPECT_THAT(MessageFor(nested(TSimpleXMLDocument::cMaxDepth + 1)),
              testing::HasSubstr("zu tief verschachtelt"));
  EXPECT_THAT(MessageFor(nested(100000)), testing::HasSubstr("zu tief verschachtelt"));
  EXPECT_NE(MessageFor(nested(100000).substr(0, 400000)), "");
}

TEST(TSimpleXMLDocument, DepthIsCountedPerBranch) {
  std::string text = "<r>";
  for (int i = 0; i < TSimpleXMLDocument::cMaxDepth * 2; ++i) text += "<a><b/></a>";
  EXPECT_EQ(MessageFor(text + "</r>"), "");
}

TEST(TSimpleXMLDocument, RefusesATextWhoseTreeWouldFillTheMemory) {
  const std::string text = "<r>" + std::string(TSimpleXMLDocument::cMaxMarks, '<') + "</r>";
  EXPECT_THAT(MessageFor(text), testing::HasSubstr("zu groß"));
}

TEST(TSimpleXMLDocument, TellsWhatIsWithinItsBounds) {
  std::string text(TSimpleXMLDocument::cMaxMarks, '=');
  EXPECT_TRUE(TSimpleXMLDocument::Fits(text));
  EXPECT_FALSE(TSimpleXMLDocument::Fits(text + "<"));
  text = std::string(TSimpleXMLDocument::cMaxBytes + 1, ' ');
  EXPECT_FALSE(TSimpleXMLDocument::Fits(text));
  EXPECT_TRUE(TSimpleXMLDocument::Fits(std::string_view(text).substr(1)));
}

TEST(TFastWriterBaseSimpleXML, WritesNothingThatCouldNotBeReadBack) {
  TFastWriterBaseSimpleXML writer;
  writer.WriteString(u"A", TString(TSimpleXMLDocument::cMaxMarks - 1, u'='), {});
  TMemoryStream stream;
  EXPECT_THROW(writer.SaveToStream(stream), Exception);
  EXPECT_EQ(stream.GetSize(), 0u);

  writer.Clear();
  writer.WriteString(u"A", TString(TSimpleXMLDocument::cMaxMarks - 2, u'='), {});
  EXPECT_NO_THROW(writer.SaveToStream(stream));
}

TEST(TSimpleXMLDocument, AFailedLoadLeavesNoElementOfTheOneBefore) {
  TSimpleXMLDocument document;
  Load(document, "<R/>");
  EXPECT_THROW(Load(document, "<R>"), EConvertError);
  EXPECT_FALSE(document.GetDocumentElement());
}

}  // namespace
}  // namespace kk

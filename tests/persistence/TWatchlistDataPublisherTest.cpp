#include "persistence/TWatchlistDataPublisher.h"

#include <cerrno>
#include <filesystem>

#include "TWatchlistHandlerTest.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "tests/support/TFaultyFileLayer.h"

namespace kk {
namespace {

/// Notes what it is to import.
struct TReceiver {
  bool File(TObject* Sender, TStringView iFileName) {
    LastSender = Sender;
    FileName = iFileName;
    Bytes = ReadFileBytes(iFileName);
    Mode = std::filesystem::status(ToUtf8(iFileName)).permissions();
    if (Raises) throw Exception(u"kaputt");
    return Answer;
  }
  bool Mobile(TObject* Sender, TMemoryStream& iStream) {
    LastSender = Sender;
    Bytes = iStream.Bytes();
    AtStart = iStream.GetPosition() == 0;
    return Answer;
  }

  TObject* LastSender = nullptr;
  TString FileName;
  std::string Bytes;
  std::filesystem::perms Mode{};
  bool AtStart = false;
  bool Answer = true;
  bool Raises = false;
};

/// A disk on which what was written is gone at once.
struct TForgettingFileLayer : TFaultyFileLayer {
  int Rename(const char* iOldPath, const char*) override { return Unlink(iOldPath); }
};

class TWatchlistDataPublisherTest : public TWatchlistHandlerTest {
 protected:
  TWatchlistDataPublisherTest() {
    Publisher = MakeIntf<TWatchlistDataPublisher>(
        TNotifyEventImportFromFile::Of<&TReceiver::File>(&Receiver),
        TNotifyEventImportFromKKMobile::Of<&TReceiver::Mobile>(&Receiver));
  }

  TReceiver Receiver;
  TIntf<TWatchlistDataPublisher> Publisher;
  TMemoryStream Stream;
};

TEST_F(TWatchlistDataPublisherTest, OffersTheFileAndTheMobileDocument) {
  EXPECT_EQ(Publisher->GetDataStreamCount(), 2);
  EXPECT_EQ(Publisher->GetDataStreamName(0), u"Beobachten");
  EXPECT_EQ(Publisher->GetDataStreamName(1), u"Beobachten (für Kaufkobolde Mobile)");
  EXPECT_EQ(Publisher->GetDataStreamId(0), GuidLiteral("{CAB78E2F-A46D-4807-9305-55F78AFA0850}"));
  EXPECT_EQ(Publisher->GetDataStreamId(1), GuidLiteral("{59564D87-BBFC-43DA-9B59-FAE17C0BF390}"));
}

TEST_F(TWatchlistDataPublisherTest, AnyOtherIndexIsARangeErrorThatNamesTheOperation) {
  const auto message = [](auto&& iFunction) {
    try {
      iFunction();
    } catch (const ERangeError& e) {
      return ToUtf8(e.Message());
    }
    return std::string("nothing raised");
  };
  for (const int index : {-1, 2}) {
    EXPECT_EQ(message([&] { Publisher->GetDataStreamName(index); }),
              "TWatchlistDataPublisher.GetDataStreamName");
    EXPECT_EQ(message([&] { Publisher->GetDataStreamId(index); }),
              "TWatchlistDataPublisher.GetDataStreamId");
    EXPECT_EQ(message([&] { Publisher->GetHasDataForExport(index); }),
              "TWatchlistDataPublisher.GetHasDataForExport");
  }
}

TEST_F(TWatchlistDataPublisherTest, HasDataOnceThereIsAnItem) {
  EXPECT_FALSE(Publisher->GetHasDataForExport(0));
  EXPECT_FALSE(Publisher->GetHasDataForExport(1));
  FillTree(AddSource());
  EXPECT_TRUE(Publisher->GetHasDataForExport(0));
  EXPECT_TRUE(Publisher->GetHasDataForExport(1));
}

TEST_F(TWatchlistDataPublisherTest, TheFileIsSavedAndHandedOutAsItLies) {
  FillTree(AddSource());
  EXPECT_TRUE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_TRUE(Handler()->LstRemind().GetChanged());
  Stream.SetBytes(std::string(1 << 20, 'x'));
  EXPECT_TRUE(Publisher->GetDataStream(cDataStreamID, Stream));
  EXPECT_EQ(Stream.Bytes(), ReadFileBytes(FileName()));
  EXPECT_EQ(Stream.GetPosition(), 0u);
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
}

TEST_F(TWatchlistDataPublisherTest, WithoutItemsTheFileComesAllTheSame) {
  EXPECT_TRUE(Publisher->GetDataStream(cDataStreamID, Stream));
  EXPECT_GT(Stream.GetSize(), 0u);
}

TEST_F(TWatchlistDataPublisherTest, TheMobileDocumentLeavesNoTemporaryFile) {
  AddCategory(Tree(), u"Küche");
  Stream.SetBytes(std::string(1 << 20, 'x'));
  EXPECT_TRUE(Publisher->GetDataStream(cDataStreamIDMobile, Stream));
  EXPECT_EQ(Stream.GetPosition(), 0u);
  EXPECT_EQ(Stream.Bytes().find("xx"), std::string::npos);
  EXPECT_NE(Stream.Bytes().find("<name>Küche</name>"), std::string::npos);
  EXPECT_EQ(Folder.Names(), std::vector<std::string>());
}

TEST_F(TWatchlistDataPublisherTest, TheMobileDocumentSavesNothingElse) {
  FillTree(AddSource());
  EXPECT_TRUE(Publisher->GetDataStream(cDataStreamIDMobile, Stream));
  EXPECT_FALSE(FileExists(FileName()));
  EXPECT_TRUE(Handler()->LstIntegration().GetItems(0).IsChanged());
}

TEST_F(TWatchlistDataPublisherTest, WithoutAFileThereIsNoMobileDocument) {
  const TForgettingFileLayer disk;
  Stream.SetBytes("alt");
  EXPECT_FALSE(Publisher->GetDataStream(cDataStreamIDMobile, Stream));
  EXPECT_EQ(Stream.Bytes(), "");
}

TEST_F(TWatchlistDataPublisherTest, AFullDiskIsAFailureThatLeavesNoFile) {
  TFaultyFileLayer disk;
  disk.FailAll("write", ENOSPC);
  EXPECT_THROW(Publisher->GetDataStream(cDataStreamIDMobile, Stream), EInOutError);
  Stream.SetBytes("Archiv");
  EXPECT_THROW(Publisher->SetDataStream(cDataStreamID, Stream), EInOutError);
  EXPECT_EQ(Receiver.LastSender, nullptr);
  EXPECT_EQ(Folder.Names(), std::vector<std::string>());
}

TEST_F(TWatchlistDataPublisherTest, AFileThatCantBeSavedIsAFailureWhereThereIsNone) {
  BlockWriting();
  Stream.SetBytes("alt");
  EXPECT_THROW(Publisher->GetDataStream(cDataStreamID, Stream), EInOutError);
  EXPECT_EQ(Stream.Bytes(), "");
}

TEST_F(TWatchlistDataPublisherTest, SwitchedOffItHasNothingAndTakesNothing) {
  FillTree(AddSource());
  Publisher->SetEnabled(false);
  Stream.SetBytes("alt");
  for (int index = 0; index < 2; ++index) {
    EXPECT_FALSE(Publisher->GetHasDataForExport(index));
    EXPECT_FALSE(Publisher->GetDataStream(Publisher->GetDataStreamId(index), Stream));
    EXPECT_FALSE(Publisher->SetDataStream(Publisher->GetDataStreamId(index), Stream));
  }
  EXPECT_EQ(Stream.Bytes(), "alt");
  EXPECT_EQ(Receiver.LastSender, nullptr);
  EXPECT_EQ(Folder.Names(), std::vector<std::string>());
  Publisher->SetEnabled(true);
  EXPECT_TRUE(Publisher->GetHasDataForExport(0));
}

TEST_F(TWatchlistDataPublisherTest, AnUnknownIdTouchesNothing) {
  Stream.SetBytes("alt");
  Stream.SetPosition(2);
  EXPECT_FALSE(Publisher->GetDataStream(NewGuid(), Stream));
  EXPECT_FALSE(Publisher->SetDataStream(NewGuid(), Stream));
  EXPECT_EQ(Stream.Bytes(), "alt");
  EXPECT_EQ(Stream.GetPosition(), 2u);
}

TEST_F(TWatchlistDataPublisherTest, AFileIsImportedFromATemporaryOneThatGoes) {
  Stream.SetBytes("Archiv");
  Stream.SetPosition(3);
  EXPECT_TRUE(Publisher->SetDataStream(cDataStreamID, Stream));
  EXPECT_EQ(Receiver.Bytes, "Archiv");
  EXPECT_EQ(Receiver.Mode, std::filesystem::perms(0600));
  EXPECT_EQ(Receiver.LastSender, Publisher.Get());
  const TString number = IntToStr(reinterpret_cast<intptr_t>(Publisher.Get()));
  EXPECT_EQ(Receiver.FileName, TFileHelper::GetTempFileName(number + u".tmp"));
  EXPECT_FALSE(FileExists(Receiver.FileName));
  Receiver.Answer = false;
  EXPECT_FALSE(Publisher->SetDataStream(cDataStreamID, Stream));
}

TEST_F(TWatchlistDataPublisherTest, TheTemporaryFileGoesAlsoBehindAFailure) {
  Receiver.Raises = true;
  EXPECT_THROW(Publisher->SetDataStream(cDataStreamID, Stream), Exception);
  EXPECT_FALSE(FileExists(Receiver.FileName));
}

TEST_F(TWatchlistDataPublisherTest, WithoutAReceiverAFileIsNotImported) {
  const auto publisher = MakeIntf<TWatchlistDataPublisher>(TNotifyEventImportFromFile(),
                                                           TNotifyEventImportFromKKMobile());
  TFaultyFileLayer disk;
  EXPECT_FALSE(publisher->SetDataStream(cDataStreamID, Stream));
  EXPECT_TRUE(disk.Calls().empty());
}

TEST_F(TWatchlistDataPublisherTest, AMobileDocumentIsImportedFromItsStart) {
  Stream.SetBytes("<watchlist/>");
  Stream.SetPosition(5);
  EXPECT_TRUE(Publisher->SetDataStream(cDataStreamIDMobile, Stream));
  EXPECT_EQ(Receiver.Bytes, "<watchlist/>");
  EXPECT_TRUE(Receiver.AtStart);
  EXPECT_EQ(Receiver.LastSender, Publisher.Get());
  Receiver.Answer = false;
  EXPECT_FALSE(Publisher->SetDataStream(cDataStreamIDMobile, Stream));
}

}  // namespace
}  // namespace kk

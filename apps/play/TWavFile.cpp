#include "apps/play/TWavFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "apps/play/ESoundError.h"

namespace kk {

namespace {

// More chunks than any program writes before the sound.
constexpr int cMaxChunks = 1000;

// The descriptor until the library has a copy of its own.
class TDescriptor {
 public:
  // Without O_NONBLOCK a pipe under the file's name would hold the program.
  explicit TDescriptor(const std::string& iPath)
      : FNumber(open(iPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (FNumber >= 0) return;
    const int error = errno;
    throw ESoundError(error, error == ENOENT ? TString(u"Die Datei gibt es nicht")
                                             : Format(u"Die Datei lässt sich nicht öffnen: %s",
                                                      {FromUtf8(std::strerror(error))}));
  }
  ~TDescriptor() { close(FNumber); }
  TDescriptor(const TDescriptor&) = delete;
  TDescriptor& operator=(const TDescriptor&) = delete;

  int Number() const { return FNumber; }

  // Of a regular file; everything else is refused.
  int64_t Size() const {
    struct stat info {};
    if (fstat(FNumber, &info) != 0) throw ESoundError(EIO, u"Die Datei lässt sich nicht lesen");
    if (S_ISDIR(info.st_mode)) throw ESoundError(EISDIR, u"Das ist ein Ordner und keine Datei");
    if (!S_ISREG(info.st_mode)) throw ESoundError(EINVAL, u"Das ist keine gewöhnliche Datei");
    return info.st_size;
  }

  template <size_t Count>
  bool ReadAt(int64_t iPosition, std::array<char, Count>& oBytes) const {
    return pread(FNumber, oBytes.data(), Count, iPosition) == static_cast<ssize_t>(Count);
  }

 private:
  int FNumber;
};

uint32_t LittleEndian(const char* iBytes) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(iBytes[i]);
  return value;
}

// The library takes a file that was cut off for a shorter one; the header knows better.
void CheckChunks(const TDescriptor& iFile) {
  const int64_t size = iFile.Size();
  if (size == 0) throw ESoundError(ENODATA, u"Die Datei ist leer");
  std::array<char, 12> header{};
  const bool isWav = iFile.ReadAt(0, header) && std::string_view(header.data(), 4) == "RIFF" &&
                     std::string_view(header.data() + 8, 4) == "WAVE";
  if (!isWav) throw ESoundError(EINVAL, u"Die Datei ist keine WAV-Datei");
  int64_t position = header.size();
  for (int i = 0; i < cMaxChunks; ++i) {
    std::array<char, 8> chunk{};
    if (!iFile.ReadAt(position, chunk)) break;
    const int64_t length = LittleEndian(chunk.data() + 4);
    position += static_cast<int64_t>(chunk.size());
    if (std::string_view(chunk.data(), 4) != "data") {
      position += length + length % 2;  // chunks begin at even places
      continue;
    }
    if (length <= size - position) return;
    break;
  }
  throw ESoundError(ENODATA, u"Die Datei ist unvollständig, ihr Ende fehlt");
}

}  // namespace

TWavFile::TWavFile(const std::string& iPath) {
  const TDescriptor file(iPath);
  CheckChunks(file);
  // The copy belongs to the library from here on, also if it does not like the file.
  const int copy = fcntl(file.Number(), F_DUPFD_CLOEXEC, 0);
  if (copy < 0) throw ESoundError(errno, u"Die Datei lässt sich nicht öffnen");
  FFile.reset(sf_open_fd(copy, SFM_READ, &FInfo, SF_TRUE));
  if (!FFile) {
    throw ESoundError(EINVAL, Format(u"Die WAV-Datei ist beschädigt oder von unbekannter Art (%s)",
                                     {FromUtf8(sf_strerror(nullptr))}));
  }
  CheckFormat();
}

void TWavFile::CheckFormat() const {
  if (FInfo.channels < 1 || FInfo.channels > cMaxChannels) {
    throw ESoundError(EINVAL, Format(u"Die Datei hat %d Kanäle, höchstens %d lassen sich abspielen",
                                     {FInfo.channels, cMaxChannels}));
  }
  if (FInfo.samplerate < cMinRate || FInfo.samplerate > cMaxRate) {
    throw ESoundError(EINVAL, Format(u"Die Abtastrate der Datei von %d Hz liegt nicht zwischen %d "
                                     u"und %d",
                                     {FInfo.samplerate, cMinRate, cMaxRate}));
  }
  if (FInfo.frames < 1) throw ESoundError(ENODATA, u"Die Datei enthält keinen Ton");
}

int64_t TWavFile::LengthMs() const { return (Frames() * 1000 + Rate() - 1) / Rate(); }

int64_t TWavFile::Read(std::vector<float>& ioBlock) {
  const auto frames = static_cast<sf_count_t>(ioBlock.size()) / Channels();
  return sf_readf_float(FFile.get(), ioBlock.data(), frames);
}

}  // namespace kk

#include "raw_streambufs.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace io {

using Traits = std::char_traits<char16_t>;
using std::ios_base;

namespace {

constexpr std::streamoff kFailed = -1;
constexpr std::size_t kLeastRoom = 64;

constexpr std::size_t kLane = 16; ///< bytes converted at a time
using Bytes [[gnu::vector_size(kLane)]] = unsigned char;
using Units [[gnu::vector_size(kLane * 2)]] = char16_t;

/// Gives each byte a unit. Both arrays have room for whole lanes.
void Widen(const char* bytes, std::size_t count, char16_t* units) {
    for (std::size_t i = 0; i < count; i += kLane) {
        Bytes lane;
        std::memcpy(&lane, bytes + i, sizeof lane);
        const Units wide = __builtin_convertvector(lane, Units);
        std::memcpy(units + i, &wide, sizeof wide);
    }
}

/// Gives each unit a byte, and returns all bits of the units. Both arrays have room for whole
/// lanes.
char16_t Narrow(const char16_t* units, std::size_t count, char* bytes) {
    Units all{};
    const auto takeLane = [&](std::size_t i, const Units& lane) {
        const Bytes narrow = __builtin_convertvector(lane, Bytes);
        std::memcpy(bytes + i, &narrow, sizeof narrow);
        all |= lane;
    };
    std::size_t i = 0;
    Units lane{};
    for (; count - i >= kLane; i += kLane) {
        std::memcpy(&lane, units + i, sizeof lane);
        takeLane(i, lane);
    }
    if (i < count) {
        lane = Units{};
        std::memcpy(&lane, units + i, (count - i) * sizeof(char16_t));
        takeLane(i, lane);
    }
    char16_t bits = 0;
    for (std::size_t k = 0; k < kLane; ++k)
        bits = static_cast<char16_t>(bits | all[k]);
    return bits;
}

} // namespace

// --- CString_streambuf ---

CString_streambuf::CString_streambuf(std::size_t size) {
    if (size > 0)
        Resize(size);
}

CString_streambuf::CString_streambuf(std::u16string text)
    : mGiven(std::move(text)), mUnits(mGiven.data()), mSize(mGiven.size()), mLength(mSize) {
    setg(mUnits, mUnits, mUnits + mSize);
    setp(mUnits, mUnits + mSize);
}

CString_streambuf::~CString_streambuf() {
    if (mUnits != mGiven.data())
        std::free(mUnits);
}

/// Changes the room and keeps both positions. Once the string grows it leaves mGiven, since
/// std::realloc moves pages without touching them and leaves new ones untouched.
void CString_streambuf::Resize(std::size_t size) {
    const std::ptrdiff_t read = gptr() - mUnits;
    const std::ptrdiff_t written = pptr() - mUnits;
    const bool isGiven = mUnits == mGiven.data();
    void* const units = std::realloc(isGiven ? nullptr : mUnits, size * sizeof(char16_t));
    if (!units)
        throw std::bad_alloc();
    if (isGiven)
        std::memcpy(units, mUnits, mLength * sizeof(char16_t));
    mUnits = static_cast<char16_t*>(units);
    mSize = size;
    setg(mUnits, mUnits + read, mUnits + mLength);
    setp(mUnits + written, mUnits + mSize);
}

void CString_streambuf::NoteLength() noexcept {
    mLength = std::max(mLength, static_cast<std::size_t>(pptr() - mUnits));
}

std::u16string_view CString_streambuf::GetView() const noexcept {
    return {mUnits, std::max(mLength, static_cast<std::size_t>(pptr() - mUnits))};
}

CString_streambuf::int_type CString_streambuf::underflow() {
    NoteLength(); // what was written may be read
    setg(mUnits, gptr(), mUnits + mLength);
    return gptr() == egptr() ? Traits::eof() : Traits::to_int_type(*gptr());
}

CString_streambuf::int_type CString_streambuf::overflow(int_type unit) {
    if (Traits::eq_int_type(unit, Traits::eof()))
        return Traits::not_eof(unit);
    NoteLength();
    Resize(std::max(mSize * 2, kLeastRoom));
    *pptr() = Traits::to_char_type(unit);
    pbump(1);
    return unit;
}

std::streamsize CString_streambuf::xsputn(const char16_t* units, std::streamsize count) {
    const auto wanted = static_cast<std::size_t>(count);
    if (wanted > static_cast<std::size_t>(epptr() - pptr())) {
        NoteLength();
        Resize(std::max({mSize * 2, mLength + wanted, kLeastRoom}));
    }
    std::memcpy(pptr(), units, wanted * sizeof(char16_t));
    setp(pptr() + wanted, epptr());
    return count;
}

CString_streambuf::pos_type CString_streambuf::seekoff(off_type offset, ios_base::seekdir from,
                                                       ios_base::openmode which) {
    NoteLength();
    const bool isRead = which & ios_base::in;
    const bool isWritten = which & ios_base::out;
    off_type base = 0;
    if (from == ios_base::cur)
        base = (isRead && !isWritten ? gptr() : pptr()) - mUnits;
    else if (from == ios_base::end)
        base = static_cast<off_type>(mLength);
    const auto most = static_cast<off_type>(mLength);
    if (!(isRead || isWritten) || offset < -base || offset > most - base)
        return kFailed;
    char16_t* const target = mUnits + base + offset;
    if (isRead)
        setg(mUnits, target, mUnits + mLength);
    if (isWritten)
        setp(target, mUnits + mSize);
    return base + offset;
}

CString_streambuf::pos_type CString_streambuf::seekpos(pos_type pos, ios_base::openmode which) {
    return seekoff(off_type(pos), ios_base::beg, which);
}

// --- CByte_streambuf ---

CByte_streambuf::CByte_streambuf(std::streambuf& bytes)
    : mBytes(bytes), mUnits(std::make_unique_for_overwrite<char16_t[]>(kUnits)),
      mRawBytes(std::make_unique_for_overwrite<char[]>(kUnits)) {
    for (const ios_base::openmode which :
         {ios_base::in | ios_base::out, ios_base::in, ios_base::out}) {
        if (mPos < 0)
            mPos = bytes.pubseekoff(0, ios_base::cur, which);
    }
}

CByte_streambuf::~CByte_streambuf() {
    Flush();
}

CByte_streambuf::off_type CByte_streambuf::Tell() const noexcept {
    return mPos < 0 ? mPos : mPos + (pptr() - pbase()) - (egptr() - gptr());
}

/// Writes what is buffered; in any case nothing is buffered for writing then.
bool CByte_streambuf::Flush() {
    const auto count = static_cast<std::size_t>(pptr() - pbase());
    const char16_t all = Narrow(mUnits.get(), count, mRawBytes.get());
    setp(nullptr, nullptr);
    if (all > 0xFF)
        return false;
    const auto size = static_cast<std::streamsize>(count);
    const std::streamsize written = count ? mBytes.sputn(mRawBytes.get(), size) : 0;
    mPos += mPos < 0 ? 0 : written;
    return written == size;
}

/// Forgets what was read ahead; the bytes then stand where reading stood.
bool CByte_streambuf::DropInput() {
    const off_type pos = Tell();
    const bool isAhead = egptr() != gptr();
    setg(nullptr, nullptr, nullptr);
    return !isAhead || MoveTo(pos, ios_base::beg) >= 0;
}

CByte_streambuf::off_type CByte_streambuf::MoveTo(off_type offset, ios_base::seekdir from) {
    const off_type pos = mBytes.pubseekoff(offset, from, ios_base::in | ios_base::out);
    if (pos >= 0)
        mPos = pos;
    return pos;
}

CByte_streambuf::int_type CByte_streambuf::underflow() {
    if (gptr() != egptr())
        return *gptr();
    if (pptr() && (!Flush() || (mPos >= 0 && MoveTo(mPos, ios_base::beg) < 0)))
        return Traits::eof();
    std::streamsize count = 0;
    try {
        count = mBytes.sgetn(mRawBytes.get(), kUnits);
    } catch (const ios_base::failure&) { // as file buffers tell it
        mHasFailed = true;
    }
    if (count <= 0)
        return Traits::eof();
    mPos += mPos < 0 ? 0 : count;
    Widen(mRawBytes.get(), static_cast<std::size_t>(count), mUnits.get());
    setg(mUnits.get(), mUnits.get(), mUnits.get() + count);
    return *gptr();
}

CByte_streambuf::int_type CByte_streambuf::overflow(int_type unit) {
    if (Traits::eq_int_type(unit, Traits::eof()))
        return Traits::not_eof(unit);
    if ((gptr() && !DropInput()) || (pptr() && !Flush()))
        return Traits::eof();
    setp(mUnits.get(), mUnits.get() + kUnits);
    return sputc(Traits::to_char_type(unit));
}

int CByte_streambuf::sync() {
    const bool isWritten = Flush();
    return DropInput() && isWritten && mBytes.pubsync() == 0 ? 0 : -1;
}

CByte_streambuf::pos_type CByte_streambuf::seekoff(off_type offset, ios_base::seekdir from,
                                                   ios_base::openmode) {
    const off_type here = Tell();
    if (here < 0)
        return kFailed;
    if (from == ios_base::cur) {
        offset += here;
        from = ios_base::beg;
    }
    if (from == ios_base::beg && offset >= here - (gptr() - eback()) &&
        offset <= here + (egptr() - gptr()) && !pptr()) { // inside what is buffered
        setg(eback(), gptr() + (offset - here), egptr());
        return offset;
    }
    if (from == ios_base::beg && offset == here)
        return here;
    if (!Flush())
        return kFailed;
    setg(nullptr, nullptr, nullptr);
    return MoveTo(offset, from);
}

CByte_streambuf::pos_type CByte_streambuf::seekpos(pos_type pos, ios_base::openmode which) {
    return seekoff(off_type(pos), ios_base::beg, which);
}

// --- CFile_streambuf ---

CFile_streambuf::CFile_streambuf(const std::string& path, ios_base::openmode mode)
    : CFile_holder(path, mode | ios_base::binary), CByte_streambuf(mFile) {}

bool CFile_streambuf::Close() {
    const bool isWritten = !IsOpen() || pubsync() == 0;
    return mFile.close() && isWritten;
}

} // namespace io

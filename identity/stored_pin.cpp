#include "identity/stored_pin.h"

#include <sodium.h>

#include <QByteArray>
#include <QFile>

namespace identity {
namespace {

constexpr int kNonce = crypto_secretbox_NONCEBYTES;
constexpr int kSeal = crypto_secretbox_MACBYTES;

bool Ready() {
    return sodium_init() >= 0;
}

unsigned char* Bytes(QByteArray& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}
const unsigned char* Bytes(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

// The last character has bits that carry nothing; a text that differs there only is refused all the same.
std::optional<QByteArray> FromBase64(const QByteArray& text) {
    auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || decoded.decoded.toBase64() != text) return std::nullopt;
    return std::move(decoded.decoded);
}

std::optional<QByteArray> ReadKey(const QString& keyFile) {
    QFile file(keyFile);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    auto key = FromBase64(file.read(256).trimmed());
    if (!key || key->size() != int(crypto_secretbox_KEYBYTES)) return std::nullopt;
    return key;
}

}  // namespace

QString PinKeyFile(const QString& installRoot) {
    return installRoot + "/conf/pin.key";
}

bool MakePinKey(const QString& keyFile) {
    if (!Ready()) return false;
    if (QFile::exists(keyFile)) return IsPinKey(keyFile);
    QFile file(keyFile);
    const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, owner)) return false;
    QByteArray key(crypto_secretbox_KEYBYTES, '\0');
    crypto_secretbox_keygen(Bytes(key));
    const QByteArray line = key.toBase64() + '\n';
    const bool written = file.write(line) == line.size() && file.flush();
    // A key that is half there would keep a whole one from ever being made.
    if (!written) file.remove();
    return written;
}

bool IsPinKey(const QString& keyFile) {
    return ReadKey(keyFile).has_value();
}

std::optional<QString> EncodePin(const QString& plain, const QString& keyFile) {
    const auto key = ReadKey(keyFile);
    if (!Ready() || !key) return std::nullopt;
    const QByteArray text = plain.toUtf8();
    QByteArray stored(kNonce + kSeal + text.size(), '\0');
    randombytes_buf(stored.data(), kNonce);
    crypto_secretbox_easy(Bytes(stored) + kNonce, Bytes(text), text.size(), Bytes(stored), Bytes(*key));
    return QString::fromLatin1(stored.toBase64());
}

std::optional<QString> DecodeStoredPin(const QString& stored, const QString& keyFile) {
    const auto sealed = FromBase64(stored.trimmed().toUtf8());
    if (!sealed || sealed->size() < kNonce + kSeal) return std::nullopt;
    const auto key = ReadKey(keyFile);
    if (!Ready() || !key) return std::nullopt;
    QByteArray plain(sealed->size() - kNonce - kSeal, '\0');
    if (crypto_secretbox_open_easy(Bytes(plain), Bytes(*sealed) + kNonce, sealed->size() - kNonce, Bytes(*sealed),
                                   Bytes(*key)) != 0)
        return std::nullopt;
    return QString::fromUtf8(plain);
}

}  // namespace identity

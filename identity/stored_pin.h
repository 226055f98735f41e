#pragma once

#include <QString>
#include <optional>

// PINs are stored enciphered under the installation's own key, so that a look into the database doesn't tell them. A
// stored PIN is base64 text of a nonce and the sealed UTF-8 text; changed by a single character it no longer opens.
namespace identity {

/// Where the key of an installation lies: "conf/pin.key" under its root.
QString PinKeyFile(const QString& installRoot);

/// Writes a new random key to `keyFile`, readable by its owner alone. An existing file stays as it is.
/// False when the file can't be written or holds no key.
bool MakePinKey(const QString& keyFile);

/// True when the file holds a key that can be used.
bool IsPinKey(const QString& keyFile);

/// The stored form of a PIN, a different text on each call. Nothing when the key can't be read.
std::optional<QString> EncodePin(const QString& plain, const QString& keyFile);

/// The PIN in plain form. Nothing, which matches no entry, when the stored text is empty or can't be opened with the
/// key.
std::optional<QString> DecodeStoredPin(const QString& stored, const QString& keyFile);

}  // namespace identity

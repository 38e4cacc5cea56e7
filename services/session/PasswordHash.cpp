// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/PasswordHash.h"

#include <sodium.h>

#include <array>

namespace KODMS::Services {

namespace {

bool isReady()
{
    static const bool ready = sodium_init() >= 0;
    return ready;
}

/// The same password typed on another keyboard or system gives the same bytes.
QByteArray bytesOf(const QString &password)
{
    return password.normalized(QString::NormalizationForm_C).toUtf8();
}

/// Looks like a hash, matches nothing: a try at an unknown name costs as much as
/// one at a known name. Made once, from random bytes that are thrown away.
const QByteArray &decoy()
{
    static const QByteArray hash = [] {
        std::array<char, 32> noise{};
        randombytes_buf(noise.data(), noise.size());
        std::array<char, crypto_pwhash_STRBYTES> text{};
        if (crypto_pwhash_str(text.data(), noise.data(), noise.size(),
                              crypto_pwhash_OPSLIMIT_INTERACTIVE,
                              crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
            return QByteArray();
        return QByteArray(text.data());
    }();
    return hash;
}

bool verify(const QByteArray &hash, const QByteArray &password)
{
    return crypto_pwhash_str_verify(hash.constData(), password.constData(),
                                    static_cast<unsigned long long>(password.size())) == 0;
}

bool isHash(const QByteArray &text)
{
    return text.size() < static_cast<int>(crypto_pwhash_STRBYTES) &&
           text.startsWith(crypto_pwhash_STRPREFIX);
}

} // namespace

QString PasswordHash::make(const QString &password)
{
    if (!isReady())
        return {};
    const QByteArray bytes = bytesOf(password);
    std::array<char, crypto_pwhash_STRBYTES> text{};
    if (crypto_pwhash_str(
            text.data(), bytes.constData(), static_cast<unsigned long long>(bytes.size()),
            crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        return {};
    return QString::fromLatin1(text.data());
}

bool PasswordHash::matches(const QString &hash, const QString &password)
{
    if (!isReady())
        return false;
    const QByteArray text = hash.toLatin1();
    const QByteArray &standIn = decoy(); // made on the first call, whichever that is
    if (isHash(text))
        return verify(text, bytesOf(password));
    (void)verify(standIn, bytesOf(password));
    return false;
}

bool PasswordHash::isOutdated(const QString &hash)
{
    return !isReady() || crypto_pwhash_str_needs_rehash(hash.toLatin1().constData(),
                                                        crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                                        crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0;
}

} // namespace KODMS::Services

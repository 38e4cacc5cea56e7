// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Sha256.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <QtGlobal>

#include <array>

namespace KODMS::Services {

struct Sha256::Context {
    EVP_MD_CTX *digest = EVP_MD_CTX_new();

    Context() = default;

    ~Context() { EVP_MD_CTX_free(digest); }

    Q_DISABLE_COPY_MOVE(Context)
};

namespace {

/// Hashing memory can only fail for want of memory.
void require(int result)
{
    if (result != 1)
        qFatal("SHA-256 is not available: out of memory");
}

} // namespace

Sha256::Sha256() : m_context(std::make_unique<Context>())
{
    require(EVP_DigestInit_ex(m_context->digest, EVP_sha256(), nullptr));
}

Sha256::Sha256(Sha256 &&) noexcept = default;
Sha256 &Sha256::operator=(Sha256 &&) noexcept = default;
Sha256::~Sha256() = default;

void Sha256::add(const char *data, qint64 size)
{
    require(EVP_DigestUpdate(m_context->digest, data, static_cast<std::size_t>(size)));
}

QByteArray Sha256::finish()
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned int size = 0;
    require(EVP_DigestFinal_ex(m_context->digest, bytes.data(), &size));
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(size)).toHex();
}

QByteArray Sha256::of(const QByteArray &data)
{
    Sha256 hash;
    hash.add(data.constData(), data.size());
    return hash.finish();
}

QByteArray Sha256::libraryVersion()
{
    return OpenSSL_version(OPENSSL_VERSION_STRING);
}

} // namespace KODMS::Services

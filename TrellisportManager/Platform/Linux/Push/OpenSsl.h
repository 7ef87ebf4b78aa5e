#pragma once

#include <openssl/bn.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/param_build.h>

#include <memory>

namespace trellisport::platform::openssl {

/// Frees what the library hands out.
template <auto free>
struct Free {
    template <typename T>
    void operator()(T *object) const
    {
        free(object);
    }
};

using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Free<EVP_PKEY_CTX_free>>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, Free<EVP_CIPHER_CTX_free>>;
using Kdf = std::unique_ptr<EVP_KDF, Free<EVP_KDF_free>>;
using KdfContext = std::unique_ptr<EVP_KDF_CTX, Free<EVP_KDF_CTX_free>>;
using Number = std::unique_ptr<BIGNUM, Free<BN_clear_free>>;
using ParameterBuilder = std::unique_ptr<OSSL_PARAM_BLD, Free<OSSL_PARAM_BLD_free>>;
using Parameters = std::unique_ptr<OSSL_PARAM, Free<OSSL_PARAM_free>>;

} // namespace trellisport::platform::openssl

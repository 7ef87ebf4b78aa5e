#include "PracticeService/Certificates.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>

namespace trellisport::practice {
namespace {

using std::chrono::system_clock;

struct Freer {
    void operator()(X509 *certificate) const { X509_free(certificate); }
};
using Certificate = std::unique_ptr<X509, Freer>;

class Certificates : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path folder() const { return m_folder.path().toStdString(); }
    static QByteArray content(const std::filesystem::path &path)
    {
        QFile file(QString::fromStdString(path.string()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const std::filesystem::path &path, const QByteArray &bytes)
    {
        QFile file(QString::fromStdString(path.string()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    static Certificate certificate(const std::filesystem::path &path)
    {
        const QByteArray text = content(path);
        BIO *bio = BIO_new_mem_buf(text.constData(), static_cast<int>(text.size()));
        Certificate certificate(PEM_read_bio_X509(bio, nullptr, nullptr, nullptr));
        BIO_free(bio);
        return certificate;
    }

    QTemporaryDir m_folder;
};

TEST_F(Certificates, ServerIsSignedByTheAuthorityForThisMachineOnly)
{
    const CertificateFiles files = ensureCertificates(folder());
    const Certificate authority = certificate(files.authority);
    const Certificate server = certificate(files.server);
    ASSERT_TRUE(authority && server);
    EXPECT_EQ(X509_verify(server.get(), X509_get0_pubkey(authority.get())), 1);
    EXPECT_EQ(X509_check_ip_asc(server.get(), "127.0.0.1", 0), 1);
    EXPECT_EQ(X509_check_ip_asc(server.get(), "::1", 0), 1);
    EXPECT_EQ(X509_check_host(server.get(), "localhost", 0, 0, nullptr), 1);
    EXPECT_EQ(X509_check_ip_asc(server.get(), "127.0.0.2", 0), 0);
    EXPECT_EQ(X509_check_host(server.get(), "example.org", 0, 0, nullptr), 0);
    EXPECT_EQ(X509_check_ca(authority.get()), 1);
    EXPECT_EQ(X509_check_ca(server.get()), 0);
}

TEST_F(Certificates, KeysAreForTheirOwnerOnly)
{
    const CertificateFiles files = ensureCertificates(folder());
    for (const auto &key : {files.authorityKey, files.serverKey}) {
        EXPECT_EQ(std::filesystem::status(key).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
}

TEST_F(Certificates, SecondTimeLeavesEverythingAsItIs)
{
    const CertificateFiles files = ensureCertificates(folder());
    const QByteArray authority = content(files.authority);
    const QByteArray server = content(files.server);
    static_cast<void>(ensureCertificates(folder()));
    EXPECT_EQ(content(files.authority), authority);
    EXPECT_EQ(content(files.server), server);
}

TEST_F(Certificates, ExpiredServerCertificateIsRenewedUnderTheSameAuthority)
{
    const auto now = system_clock::now();
    const CertificateFiles files = ensureCertificates(folder(), now - std::chrono::hours(24 * 400));
    const QByteArray authority = content(files.authority);
    const QByteArray server = content(files.server);
    static_cast<void>(ensureCertificates(folder(), now));
    EXPECT_EQ(content(files.authority), authority);
    EXPECT_NE(content(files.server), server);
    EXPECT_GT(X509_cmp_current_time(X509_get0_notAfter(certificate(files.server).get())), 0);
}

TEST_F(Certificates, ExpiredAuthorityIsReplacedWithItsServerCertificate)
{
    const auto now = system_clock::now();
    const CertificateFiles files =
        ensureCertificates(folder(), now - std::chrono::hours(24 * 3649));
    const QByteArray authority = content(files.authority);
    static_cast<void>(ensureCertificates(folder(), now));
    EXPECT_NE(content(files.authority), authority);
    EXPECT_EQ(X509_verify(certificate(files.server).get(),
                          X509_get0_pubkey(certificate(files.authority).get())),
              1);
}

TEST_F(Certificates, DamagedOrForeignFilesAreReplaced)
{
    QTemporaryDir other;
    const CertificateFiles foreign = ensureCertificates(other.path().toStdString());
    const CertificateFiles files = ensureCertificates(folder());
    const std::vector<std::pair<std::filesystem::path, QByteArray>> damages{
        {files.serverKey, content(foreign.serverKey)},
        {files.server, content(foreign.server)},
        {files.server, "no certificate"},
        {files.serverKey, {}},
        {files.authorityKey, content(foreign.authorityKey)},
        {files.authority, content(files.authority).left(100)},
    };
    for (const auto &[file, bytes] : damages) {
        write(file, bytes);
        static_cast<void>(ensureCertificates(folder()));
        const Certificate authority = certificate(files.authority);
        const Certificate server = certificate(files.server);
        ASSERT_TRUE(authority && server) << file;
        EXPECT_EQ(X509_verify(server.get(), X509_get0_pubkey(authority.get())), 1) << file;
    }
}

TEST_F(Certificates, FolderThatIsNotThereIsAnError)
{
    EXPECT_THROW(static_cast<void>(ensureCertificates(folder() / "not" / "there")),
                 CertificateError);
}

} // namespace
} // namespace trellisport::practice

#include "Platform/SessionProbe.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryFile>

#include <openssl/pem.h>
#include <openssl/ssl.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>

namespace trellisport::test {
namespace {

using platform::CurlHttpOptions;
using platform::CurlHttpSession;
using platform::TransportError;
using platform::TransportFailure;

ScriptedServer::Script agreeing()
{
    return ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); });
}

/// How the exchange fails with a server that would answer everything.
TransportError failure(const ScriptedServer &server, const CurlHttpOptions &options)
{
    CurlHttpSession session(options);
    SessionProbe probe(session, postRequest(server.origin() + "/a"));
    const platform::HttpResult result = probe.wait();
    if (const auto *error = std::get_if<TransportError>(&result)) {
        return *error;
    }
    return {TransportFailure::Other, "there was a reply"};
}

TEST(CurlSessionSecurity, ATrustedServerIsTalkedTo)
{
    const ScriptedServer server(agreeing());
    CurlHttpSession session(trustingOptions());
    for (const std::string &host : {std::string("localhost"), std::string("127.0.0.1")}) {
        SessionProbe probe(
            session, getRequest("https://" + host + ':' + std::to_string(server.port()) + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
}

TEST(CurlSessionSecurity, NothingIsSentToAServerThatCannotProveItself)
{
    for (const Identity identity : {Identity::Expired, Identity::NotYetValid, Identity::WrongHost,
                                    Identity::SelfSigned, Identity::UnknownAuthority}) {
        const ScriptedServer server(agreeing(), {.identity = identity});
        const TransportError error = failure(server, trustingOptions());
        EXPECT_EQ(error.failure(), TransportFailure::SecureConnectionFailed)
            << static_cast<int>(identity);
        EXPECT_STREQ(error.what(), "The server's certificate could not be trusted.");
        EXPECT_EQ(server.requestCount(), 0);
    }
}

TEST(CurlSessionSecurity, TheTestAuthorityCountsOnlyWhereItIsNamed)
{
    const ScriptedServer server(agreeing());
    EXPECT_EQ(failure(server, {}).failure(), TransportFailure::SecureConnectionFailed);
    EXPECT_EQ(server.requestCount(), 0);
}

TEST(CurlSessionSecurity, AuthoritiesAreReadOnce)
{
    const ScriptedServer server(agreeing());
    const std::string file = testing::TempDir() + "system-authorities.pem";
    std::filesystem::copy_file(ScriptedServer::authorityFile(), file,
                               std::filesystem::copy_options::overwrite_existing);
    CurlHttpOptions options;
    options.systemAuthorities = file;
    options.authorityFile = file;
    CurlHttpSession session(options);
    SessionProbe first(session, postRequest(server.origin() + "/a"));
    EXPECT_EQ(first.waitForReply().status, 200);

    std::ofstream(file) << "no authorities any longer";
    SessionProbe second(session, postRequest(server.origin() + "/a"));
    EXPECT_EQ(second.waitForReply().status, 200);
    EXPECT_EQ(server.connections(), 2);
    std::filesystem::remove(file);
}

TEST(CurlSessionSecurity, AnAddedAuthorityIsTrustedBesideTheSystems)
{
    const TestCertificates systemAuthority("A system's authority");
    const ScriptedServer bySystems(agreeing(), {.certificates = &systemAuthority});
    const ScriptedServer byAdded(agreeing());
    const ScriptedServer byNeither(agreeing(), {.identity = Identity::UnknownAuthority});
    CurlHttpOptions options;
    options.systemAuthorities = systemAuthority.authorityFile();
    EXPECT_EQ(failure(byAdded, options).failure(), TransportFailure::SecureConnectionFailed);

    options.authorityFile = ScriptedServer::authorityFile();
    CurlHttpSession session(options);
    for (const ScriptedServer *server : {&bySystems, &byAdded, &bySystems}) {
        SessionProbe probe(session, getRequest(server->origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
    SessionProbe probe(session, getRequest(byNeither.origin() + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::SecureConnectionFailed);
    EXPECT_EQ(byNeither.requestCount(), 0);
}

TEST(CurlSessionSecurity, AnAddedAuthorityIsEnoughWhereTheSystemHasNone)
{
    const ScriptedServer server(agreeing());
    CurlHttpOptions options = trustingOptions();
    options.systemAuthorities = "/nowhere/at-all.pem";
    CurlHttpSession session(options);
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().status, 200);
}

/// The name under which a folder's certificates are looked up.
std::string searchedName(const std::string &certificateFile)
{
    const std::unique_ptr<BIO, decltype(&BIO_free)> file(BIO_new_file(certificateFile.c_str(), "r"),
                                                         &BIO_free);
    const CertificatePointer certificate(PEM_read_bio_X509(file.get(), nullptr, nullptr, nullptr));
    std::ostringstream name;
    name << std::hex << std::setfill('0') << std::setw(8)
         << X509_subject_name_hash(certificate.get()) << ".0";
    return name.str();
}

TEST(CurlSessionSecurity, AFolderOfAuthoritiesIsSearched)
{
    const ScriptedServer known(agreeing());
    const ScriptedServer unknown(agreeing(), {.identity = Identity::UnknownAuthority});
    const std::filesystem::path folder = testing::TempDir() + "system-authorities";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(ScriptedServer::authorityFile(),
                               folder / searchedName(ScriptedServer::authorityFile()),
                               std::filesystem::copy_options::overwrite_existing);
    CurlHttpOptions options;
    options.systemAuthorities = folder.string();
    CurlHttpSession session(options);
    SessionProbe probe(session, getRequest(known.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().status, 200);
    EXPECT_EQ(failure(unknown, options).failure(), TransportFailure::SecureConnectionFailed);
    std::filesystem::remove_all(folder);
}

TEST(CurlSessionSecurity, AFileOfAuthoritiesThatCannotBeReadIsAFailure)
{
    const ScriptedServer server(agreeing());
    CurlHttpOptions options;
    options.authorityFile = "/nowhere/at-all.pem";
    const TransportError error = failure(server, options);
    EXPECT_EQ(error.failure(), TransportFailure::SecureConnectionFailed);
    EXPECT_STREQ(error.what(), "The file of certificate authorities could not be read.");
}

TEST(CurlSessionSecurity, OldTlsIsRefused)
{
    const ScriptedServer server(agreeing(), {.newestTls = TLS1_1_VERSION});
    EXPECT_EQ(failure(server, trustingOptions()).failure(),
              TransportFailure::SecureConnectionFailed);
    EXPECT_EQ(server.handshakes(), 0);
}

TEST(CurlSessionSecurity, OldTlsIsRefusedAlsoWhereTheSystemTakesIt)
{
    const char *const childsMark = "TRELLISPORT_TEST_OLD_TLS";
    if (!qEnvironmentVariableIsSet(childsMark)) {
        // The system's settings are read once in a process, hence a child with others.
        QTemporaryFile settings;
        ASSERT_TRUE(settings.open());
        settings.write("openssl_conf = all\n[all]\nssl_conf = tls\n[tls]\nsystem_default = old\n"
                       "[old]\nMinProtocol = TLSv1\nCipherString = DEFAULT:@SECLEVEL=0\n");
        settings.close();
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(childsMark), QStringLiteral("1"));
        environment.insert(QStringLiteral("OPENSSL_CONF"), settings.fileName());
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget(),
                    {QStringLiteral("--gtest_filter=*.OldTlsIsRefusedAlsoWhereTheSystemTakesIt")});
        ASSERT_TRUE(child.waitForFinished(60'000));
        const QByteArray output = child.readAll();
        EXPECT_EQ(child.exitCode(), 0) << output.constData();
        EXPECT_TRUE(output.contains("[  PASSED  ] 1 test.")) << output.constData();
        return;
    }
    const std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context(
        SSL_CTX_new(TLS_client_method()), &SSL_CTX_free);
    ASSERT_EQ(SSL_CTX_get_security_level(context.get()), 0);
    const ScriptedServer server(agreeing(), {.newestTls = TLS1_1_VERSION});
    EXPECT_EQ(failure(server, trustingOptions()).failure(),
              TransportFailure::SecureConnectionFailed);
    EXPECT_EQ(server.handshakes(), 0);
}

TEST(CurlSessionSecurity, Tls12IsTaken)
{
    const ScriptedServer server(agreeing(), {.newestTls = TLS1_2_VERSION});
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().status, 200);
}

TEST(CurlSessionSecurity, AServerWithoutTlsIsNotTalkedTo)
{
    const ScriptedServer server(
        [](ServerConnection &connection) {
            connection.readSome();
            connection.send(ScriptedServer::replyBytes(200, "{}"));
        },
        {.speaksTls = false});
    const TransportError error = failure(server, trustingOptions());
    EXPECT_EQ(error.failure(), TransportFailure::SecureConnectionFailed);
    EXPECT_STREQ(error.what(), "A secure connection to the server could not be made.");
    EXPECT_EQ(server.requestCount(), 0);
}

TEST(CurlSessionSecurity, AnEndWithinTheHandshakeIsAFailureOfIt)
{
    for (const bool hard : {false, true}) {
        const ScriptedServer server(
            [hard](ServerConnection &connection) {
                connection.readSome();
                hard ? connection.reset() : connection.cut();
            },
            {.speaksTls = false});
        EXPECT_EQ(failure(server, trustingOptions()).failure(),
                  TransportFailure::SecureConnectionFailed);
    }
}

TEST(CurlSessionSecurity, APortWhereNobodyListensIsUnreachable)
{
    int port = 0;
    {
        const ScriptedServer gone(agreeing());
        port = gone.port();
    }
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest("https://localhost:" + std::to_string(port) + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::CannotConnect);
}

TEST(CurlSessionSecurity, ANameThatNobodyHasIsNotFound)
{
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest("https://no-such-host.invalid/a"));
    const platform::HttpResult result = probe.wait();
    const auto &error = std::get<TransportError>(result);
    EXPECT_EQ(error.failure(), TransportFailure::HostNotFound);
    EXPECT_STREQ(error.what(), "The server could not be found.");
}

} // namespace
} // namespace trellisport::test

#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace veltrane::tests;

namespace {

/// The name of the one variable is a default that the external DTD gives, so it tells whether the DTD was read.
const std::string kDtd = "<!ATTLIST DataField name CDATA 'from the dtd'>";
const std::string kBody = "<PMML><DataDictionary numberOfFields='1'><DataField optype='continuous' "
                          "dataType='double'/></DataDictionary><TransformationDictionary/></PMML>";

std::string WithDtd(const std::string& systemId, const std::string& internal = {}) {
    return "<!DOCTYPE PMML SYSTEM \"" + systemId + "\" [" + internal + "]>" + kBody;
}

Names ReadNames(const std::string& document) {
    std::istringstream in(document);
    ScoreDictionary* data = nullptr;
    TransformationDictionary* derived = ModelFactory::GetTransformationDictionaryFromXML(in, data, "UTF-8");
    delete derived;
    const std::unique_ptr<ScoreDictionary> owner(data);
    return data->GetVarNames();
}

void ExpectRead(const std::string& document) {
    EXPECT_EQ(ReadNames(document), Names{"from the dtd"});
}

void ExpectNotRead(const std::string& document) {
    ExpectFailure([&] { ReadNames(document); }, {MISSING_ATTRIBUTE_OF, "name", "DataField"});
}

void ExpectRefused(const std::string& document) {
    ExpectFailure([&] { ReadNames(document); }, {CANNOT_OPEN_DOCUMENT});
}

class ExternalDtd : public testing::Test {
protected:
    ExternalDtd() { fFolder.Write("model.dtd", kDtd); }
    TemporaryFolder fFolder;
};

TEST_F(ExternalDtd, IsReadFromTheWorkingDirectory) {
    ExpectRead(WithDtd("model.dtd"));
}

TEST_F(ExternalDtd, IsReadWithAPublicName) {
    ExpectRead("<!DOCTYPE PMML PUBLIC 'name' 'model.dtd'>" + kBody);
}

TEST_F(ExternalDtd, IsReadFromAnAbsolutePath) {
    ExpectRead(WithDtd((fFolder.Path() / "model.dtd").string()));
}

TEST_F(ExternalDtd, IsReadFromAFileAddress) {
    const std::string path = (fFolder.Path() / "model.dtd").string();
    ExpectRead(WithDtd("file://" + path));
    ExpectRead(WithDtd("file://localhost" + path));
    ExpectRead(WithDtd("FILE:" + path));
}

TEST_F(ExternalDtd, IsReadFromAnAddressWithEncodedCharacters) {
    fFolder.Write("a model.dtd", kDtd);
    ExpectRead(WithDtd("file://" + fFolder.Path().string() + "/a%20mode%6C.dtd"));
    ExpectRead(WithDtd("a model.dtd"));
}

TEST_F(ExternalDtd, MayBeEmpty) {
    fFolder.Write("empty.dtd", "");
    ExpectNotRead(WithDtd("empty.dtd"));
}

TEST_F(ExternalDtd, WithoutANameCountsAsEmpty) {
    ExpectNotRead(WithDtd(""));
}

TEST_F(ExternalDtd, MayDeclareAndUseInternalEntities) {
    fFolder.Write("entities.dtd", "<!ENTITY % n 'CDATA'><!ENTITY % l '(a|b) %n;'><!ENTITY name 'from the dtd'>"
                                  "<!ATTLIST DataField name %n; '&name;'>");
    ExpectRead(WithDtd("entities.dtd"));
}

TEST_F(ExternalDtd, ThatIsMissingIsRefused) {
    ExpectRefused(WithDtd("missing.dtd"));
}

TEST_F(ExternalDtd, ThatIsNoOrdinaryFileIsRefused) {
    ASSERT_EQ(mkfifo("pipe.dtd", 0600), 0);
    ExpectRefused(WithDtd("pipe.dtd"));
    ExpectRefused(WithDtd("/dev/zero"));
    ExpectRefused(WithDtd(fFolder.Path().string()));
}

TEST_F(ExternalDtd, ThatIsHugeIsRefused) {
    fFolder.Write("huge.dtd", kDtd + Repeat(" ", 5 << 20));
    ExpectRefused(WithDtd("huge.dtd"));
}

TEST_F(ExternalDtd, ThatIsNotWellFormedIsRefused) {
    fFolder.Write("bad.dtd", "root:x:0:0:root:/root:/bin/bash\n");
    ExpectRefused(WithDtd("bad.dtd"));
}

TEST_F(ExternalDtd, MayNotReadFurtherFiles) {
    fFolder.Write("outer.dtd", "<!ENTITY % more SYSTEM 'model.dtd'>%more;");
    ExpectRefused(WithDtd("outer.dtd"));
}

TEST_F(ExternalDtd, IsTheOnlyFileThatIsRead) {
    ExpectRefused(WithDtd("model.dtd", "<!ENTITY % more SYSTEM 'model.dtd'>%more;"));
    ExpectRefused("<!DOCTYPE PMML SYSTEM 'model.dtd' [<!ENTITY more SYSTEM 'model.dtd'>]><PMML>&more;</PMML>");
    ExpectRefused("<!DOCTYPE PMML [<!ENTITY % more SYSTEM 'model.dtd'>%more;]>" + kBody);
}

TEST_F(ExternalDtd, IsNotReadForAModel) {
    EXPECT_EQ(Build("<!DOCTYPE PMML SYSTEM 'missing.dtd'><PMML><TreeModel/></PMML>", {"TreeModel"}).at("plugin"),
              "TreeModel");
    EXPECT_EQ(
        BuildWithDictionary("<!DOCTYPE PMML SYSTEM 'missing.dtd'><PMML><TreeModel/></PMML>", nullptr, {"TreeModel"})
            .at("plugin"),
        "TreeModel");
}

/// A socket on this machine that would see any connection.
class Listener {
public:
    Listener() : fSocket(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        EXPECT_EQ(bind(fSocket, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(fSocket, 1), 0);
        EXPECT_EQ(getsockname(fSocket, reinterpret_cast<sockaddr*>(&address), &size), 0);
        fPort = ntohs(address.sin_port);
    }
    ~Listener() { close(fSocket); }

    std::string Address(const std::string& scheme) const {
        return scheme + "://127.0.0.1:" + std::to_string(fPort) + "/model.dtd";
    }

    bool WasReached() const {
        pollfd waiting{fSocket, POLLIN, 0};
        return poll(&waiting, 1, 0) != 0;
    }

private:
    int fSocket;
    int fPort = 0;
};

TEST_F(ExternalDtd, AtANetworkAddressCountsAsEmpty) {
    const Listener listener;
    ExpectNotRead(WithDtd(listener.Address("http")));
    ExpectNotRead(WithDtd(listener.Address("HTTP")));
    ExpectNotRead(WithDtd(listener.Address("https")));
    ExpectNotRead(WithDtd(listener.Address("ftp")));
    ExpectNotRead(WithDtd("file://another.machine/model.dtd"));
    ExpectNotRead(WithDtd("//another.machine/model.dtd"));
    ExpectNotRead(WithDtd("file:////another.machine/model.dtd"));
    EXPECT_FALSE(listener.WasReached());
}

TEST_F(ExternalDtd, EntitiesAtANetworkAddressAreRefusedUnopened) {
    const Listener listener;
    const std::string declared = "<!ENTITY e SYSTEM '" + listener.Address("http") + "'>";
    const std::string parameter = "<!ENTITY % e SYSTEM '" + listener.Address("http") + "'>%e;";
    ExpectRefused("<!DOCTYPE PMML [" + declared + "]><PMML>&e;</PMML>");
    ExpectRefused("<!DOCTYPE PMML [" + parameter + "]>" + kBody);
    for (const std::string& document : {"<!DOCTYPE PMML [" + declared + "]><PMML>&e;<TreeModel/></PMML>",
                                        "<!DOCTYPE PMML [" + parameter + "]><PMML><TreeModel/></PMML>"}) {
        ExpectFailure([&] { Build(document, {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
        ExpectFailure([&] { BuildWithDictionary(document, nullptr, {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
    }
    EXPECT_FALSE(listener.WasReached());
}

} // namespace

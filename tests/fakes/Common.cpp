// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/Common.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS {

Common *Common::commonInterface()
{
    static Common common;
    return &common;
}

KODMS_Config Common::getConfig()
{
    auto &services = FakeServices::instance();
    services.record("Common::getConfig");
    return services.config;
}

std::string Common::getGUID()
{
    auto &services = FakeServices::instance();
    return services.guids.take(services.record("Common::getGUID"));
}

int Common::MongodbPut(const std::string &database, const std::string &bucket,
                       const std::string &localPath, const std::string &storedName)
{
    return FakeServices::instance().answer("Common::MongodbPut", database, bucket, localPath,
                                           storedName);
}

int Common::MongodbDel(const std::string &database, const std::string &bucket,
                       const std::string &storedName)
{
    return FakeServices::instance().answer("Common::MongodbDel", database, bucket, storedName);
}

int Common::FoldersCompressSave2MongoDb(const std::string &folder, const std::string &stagingDir,
                                        std::string &storedName)
{
    auto &services = FakeServices::instance();
    const auto call = services.record("Common::FoldersCompressSave2MongoDb", folder, stagingDir);
    storedName = services.packedNames.take(call);
    return services.result("Common::FoldersCompressSave2MongoDb").take(call);
}

} // namespace KODMS

// Several threads query one loaded registry, the first S-58 look-up among them, while the log
// sink is replaced: every answer is right (and a ThreadSanitizer build, VLCHART_TSAN, finds no
// race).
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "Base/KGLogFile.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

TEST(KGS57RegistryThreads, ConcurrentLookupsAndFirstS58LoadAgree) {
    vltest::ModulePathOverride home(vltest::DefaultDataDir());
    std::atomic<int> logged{0};
    const KGC::KGLogFile::Sink counting = [&logged](const KGC::KGLogRecord&) { ++logged; };
    const KGC::KGLogFile::Sink previous = KGC::KGLogFile::GetInstance()->SetSink(counting);
    for (int round = 0; round < 20; ++round) {
        KGC::KGS57Config registry;  // its S-58 file is loaded by whichever thread comes first
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < 8; ++t) {
            threads.emplace_back([&registry, &wrong, t] {
                KGC::KGS58Info info;
                KGC::KGS57Object object;
                KGC::KGS57Attribute attribute;
                if (!registry.GetS58Info(t % 2 ? 505 : 1500, info)) ++wrong;
                if (!registry.GetS57Object(u"LIGHTS", object) || object.code != 75) ++wrong;
                if (!registry.GetS57Attributes(75, attribute) || attribute.acronym != u"COLOUR")
                    ++wrong;
                KGC::KGLogFile::GetInstance()->RecordLog(KGC::KGLogFile::Info, u"query", "t", t);
            });
        }
        // The sink is replaced (by an equal one) while the threads log: no record is lost.
        for (int i = 0; i < 8; ++i) KGC::KGLogFile::GetInstance()->SetSink(counting);
        for (auto& thread : threads) thread.join();
        EXPECT_EQ(wrong.load(), 0) << "round " << round;
    }
    KGC::KGLogFile::GetInstance()->SetSink(previous);
    EXPECT_EQ(logged.load(), 20 * 8);
}

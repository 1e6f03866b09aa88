// What the backup costs: queueing, and sending a long queue to a service on the loopback address while the
// main thread goes on.

#include "VarnetApp/AppStore/MainQueue.h"
#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetCore/Cloud/CloudExport.h"
#include "VarnetCore/Cloud/CloudOutbox.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "tests/VarnetApp/CloudStore/CloudTestService.h"
#include "tests/VarnetApp/CloudStore/FakeKeychain.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSslConfiguration>
#include <QThread>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <time.h>

#include <algorithm>
#include <semaphore>

namespace {

using namespace varnet;

std::vector<CloudItem> items(int first, int count) {
    std::vector<CloudItem> made;
    for (int number = first; number < first + count; ++number)
        made.push_back(*CloudItem::make("battery", std::to_string(number), 1'790'000'000.0 + number,
                                        {{"charge", 50},
                                         {"state", "discharging"},
                                         {"segment", "0F9B8E1C-6E0B-4A43-9F0D-2B4C6D8E0A1F"},
                                         {"watts", -9.5}}));
    return made;
}

const CloudCredentials credentials{"token", "device", "account", "e", "generation-1", "off", "private", {}};

/// A hundred new items into a queue that holds so many already.
void capture(benchmark::State& state) {
    const TemporaryFolder folder;
    const SystemClock clock;
    auto outbox = CloudOutbox::open(folder.path() / "cloud" / "outbox.sqlite", clock);
    int next = static_cast<int>(state.range(0));
    if (!outbox || !(*outbox)->capture(items(0, next), "scope")) return state.SkipWithError("no queue");
    for (auto _ : state) {
        state.PauseTiming();
        const auto hundred = items(next, 100);
        next += 100;
        state.ResumeTiming();
        if (!(*outbox)->capture(hundred, "scope")) return state.SkipWithError("not queued");
    }
}

/// The service, on a thread of its own.
class ServiceThread {
public:
    ServiceThread() {
        thread_.start();
        QMetaObject::invokeMethod(
            &context_,
            [this] {
                service_ = std::make_unique<CloudTestService>(clock_);
                service_->admit("token");
                ready_.release();
            },
            Qt::QueuedConnection);
        ready_.acquire();
    }
    ~ServiceThread() {
        QMetaObject::invokeMethod(&context_, [this] { service_.reset(); }, Qt::BlockingQueuedConnection);
        thread_.quit();
        thread_.wait();
    }
    CloudTestService& service() { return *service_; } ///< what does not change only

private:
    struct Context : QObject {
        explicit Context(QThread& thread) { moveToThread(&thread); }
    };
    const SystemClock clock_;
    QThread thread_;
    Context context_{thread_};
    std::unique_ptr<CloudTestService> service_;
    std::binary_semaphore ready_{0};
};

/// CPU time of the calling thread.
double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Everything that waits goes out in batches. The longest time for which the main thread's loop did not turn
/// is what a window would feel.
void drain(benchmark::State& state) {
    const TemporaryFolder folder;
    const SystemClock clock;
    const int rows = static_cast<int>(state.range(0));
    const auto file = folder.path() / "cloud" / "outbox.sqlite";
    if (auto outbox = CloudOutbox::open(file, clock);
        !outbox || !(*outbox)->capture(items(0, rows), credentials.scope()))
        return state.SkipWithError("no queue");
    ServiceThread thread;
    QSslConfiguration ssl = QSslConfiguration::defaultConfiguration();
    ssl.setCaCertificates({thread.service().authority().certificate});
    MainQueue mainQueue;
    ThreadQueue recorderQueue;
    FakeKeychain keychain;
    keychain.stored = credentials.json();
    CloudService service({.endpoint = thread.service().endpoint(),
                          .clock = clock,
                          .version = "1",
                          .systemVersion = "1",
                          .ssl = &ssl});
    CloudStore store({.clock = clock,
                      .mainQueue = mainQueue,
                      .recorderQueue = recorderQueue,
                      .service = service,
                      .keychain = keychain,
                      .keyFile = folder.path() / "cloud" / "installation.json",
                      .recorder = std::make_shared<CloudRecorder>(file, clock)});
    qint64 longest = 0;
    const double before = threadSeconds();
    for (auto _ : state) {
        QElapsedTimer beat;
        QTimer heart;
        heart.setTimerType(Qt::PreciseTimer);
        QObject::connect(&heart, &QTimer::timeout, &heart, [&] {
            longest = std::max(longest, beat.nsecsElapsed() - 1'000'000);
            beat.start();
            if (!store.busy() && store.nextAttempt() > Date::distantPast()) QCoreApplication::quit();
        });
        beat.start();
        heart.start(1);
        store.start();
        QCoreApplication::exec();
    }
    const double own = threadSeconds() - before;
    if (store.retrySeconds() != CloudStore::firstRetry) return state.SkipWithError("not sent");
    state.counters["longest_ms"] = static_cast<double>(longest) / 1e6;
    state.counters["main_cpu_s"] = own;
}

BENCHMARK(capture)->Arg(0)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(drain)->Arg(10'000)->Arg(100'000)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

// What a pass costs the main thread while a list of 2,000 groups is on screen.

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetCore/Monitoring/SnapshotAssembler.h"
#include "probes/SystemProbes.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

Q_IMPORT_QML_PLUGIN(VarnetPlugin)

namespace {

using namespace varnet;

constexpr std::uint32_t user = 1000;
constexpr Date start{800'000'000};

class IdleQueue final : public SerialQueue {
public:
    void postAfter(double, Task) override {}
};

/// A machine of 2,000 groups: processes of nobody's application, half of them development work, a tenth of
/// them other users'. From pass to pass some change their figures and change places.
std::shared_ptr<const MonitorSnapshot> snapshotOf(int pass) {
    std::vector<ProcessSample> samples;
    for (std::int32_t i = 0; i < 2000; ++i) {
        ProcessSample sample;
        sample.id = {1'700'000'000, 1000 + i, static_cast<std::uint64_t>(1'700'000'000 + i) * 1'000'000};
        sample.parentPID = 1;
        sample.uid = i % 10 == 0 ? 0 : user;
        sample.name = i % 2 == 0 ? "node" : "worker-" + std::to_string(i);
        sample.executable = "/usr/local/bin/" + std::string(sample.name);
        sample.arguments = {sample.name.str(), "--some", "arguments", "as-usual=" + std::to_string(i)};
        sample.averageCPU = i < 200 ? (i * 7 + pass * 13) % 40 : 0;
        sample.cpu = sample.averageCPU;
        sample.memory = static_cast<std::uint64_t>(5'000'000 + i * 1'000 + (i < 200 ? pass * 4096 : 0));
        sample.portsAvailable = true;
        samples.push_back(std::move(sample));
    }
    SnapshotAssembler assembler;
    auto result = assembler.assemble(std::move(samples), {}, start, user);
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = start + pass * 2.0;
    snapshot->processes = std::move(result.processes);
    snapshot->groups = std::move(result.groups);
    snapshot->services = std::move(result.services);
    snapshot->systemCPU = 12;
    snapshot->logicalCores = 8;
    return snapshot;
}

class Fixture {
public:
    Fixture() {
        for (int pass = 0; pass < 8; ++pass)
            passes.push_back(snapshotOf(pass));
        Theme::shared().setReducedMotion(true);
        store.setPage(Page::sources);
        context.give(*view.engine());
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(1040, 720);
        view.setSource(QUrl("qrc:/qt/qml/Varnet/MainWindow.qml"));
        view.show();
        (void)view.grabWindow();
    }

    SystemProbes probes;
    SystemClock clock;
    IdleQueue queue;
    AppLocalization localization{nullptr};
    std::vector<std::shared_ptr<const MonitorSnapshot>> passes;
    VarnetStore store{{.probes = probes,
                       .clock = clock,
                       .engineQueue = queue,
                       .mainQueue = queue,
                       .localization = localization,
                       .storage = {},
                       .user = user,
                       .preview = snapshotOf(0),
                       .collaborators = {}}};
    ViewContext context{store, localization, clock};
    QQuickView view;
};

/// Applying a snapshot: the models' diff, and what the rows in sight make of it.
void applySnapshot(benchmark::State& state) {
    Fixture fixture;
    std::size_t pass = 0;
    for (auto _ : state)
        fixture.store.setPreview(fixture.passes[++pass % fixture.passes.size()]);
}

/// The same until it is painted.
void applyAndPaint(benchmark::State& state) {
    Fixture fixture;
    std::size_t pass = 0;
    for (auto _ : state) {
        fixture.store.setPreview(fixture.passes[++pass % fixture.passes.size()]);
        benchmark::DoNotOptimize(fixture.view.grabWindow());
    }
}

/// A letter typed into the search field.
void search(benchmark::State& state) {
    Fixture fixture;
    bool sought = false;
    for (auto _ : state) {
        sought = !sought;
        fixture.store.setSearch(sought ? "node" : "");
    }
}

BENCHMARK(applySnapshot)->Unit(benchmark::kMillisecond);
BENCHMARK(applyAndPaint)->Unit(benchmark::kMillisecond);
BENCHMARK(search)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

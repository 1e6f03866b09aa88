#include "VarnetApp/Application/ApplicationDelegate.h"
#include "VarnetApp/Diagnostics/BatteryDiagnostics.h"
#include "VarnetApp/Diagnostics/CommandLine.h"
#include "VarnetApp/Diagnostics/Diagnostics.h"
#include "VarnetApp/Diagnostics/DiskDiagnostics.h"
#include "VarnetApp/Diagnostics/ReleaseFeedDiagnostic.h"
#include "VarnetApp/Diagnostics/StorageDiagnostics.h"
#include "VarnetApp/Previews/Previews.h"
#include "VarnetApp/Updates/RunningCopy.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <malloc.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int badUsage = 2;

/// Whether there is anything to open a window on.
bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

int render(const varnet::CommandLine& line, int argc, char** argv) {
    using Action = varnet::CommandLine::Action;
    // Pictures need no display, and must not depend on one that is there.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    const QString language = QString::fromStdString(line.language);
    if (line.action == Action::renderCollection)
        return varnet::Previews::renderCollection(line.folder, language);
    if (line.action == Action::renderStorage) return varnet::Previews::renderStorage(line.folder, language);
    if (line.action == Action::renderReports) return varnet::Previews::renderReports(line.folder, language);
    if (line.action == Action::renderCloud) return varnet::Previews::renderCloud(line.folder, language);
    if (line.action == Action::renderMarketing)
        return varnet::Previews::renderMarketing(line.folder, language);
    if (line.action == Action::renderLocalization)
        return varnet::Previews::renderLocalization(line.folder, language, QString::fromStdString(line.only));
    const std::string only = line.action == Action::renderBattery ? "battery" : line.only;
    return varnet::Previews::render(line.folder, language, QString::fromStdString(only));
}

int checkUpdate(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const varnet::RunningCopy copy = varnet::RunningCopy::get();
    return varnet::ReleaseFeedDiagnostic::run({copy.releaseHost}, copy);
}

} // namespace

int main(int argc, char** argv) {
    // Bytes from which a block is mapped by itself, and is the system's again when it is freed. Left alone
    // the allocator raises this with the largest picture it has seen, and the heap stays full of holes.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    using varnet::CommandLine;
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const CommandLine line = CommandLine::parse(arguments);
    switch (line.action) {
    case CommandLine::Action::refuse:
        std::fprintf(stderr, "varnet: %s Try \"varnet --help\".\n", line.refusal.c_str());
        return badUsage;
    case CommandLine::Action::help:
        std::fputs(CommandLine::help().c_str(), stdout);
        return 0;
    case CommandLine::Action::version:
        std::puts("varnet " VARNET_VERSION);
        return 0;
    case CommandLine::Action::batteryDiagnose:
        return varnet::BatteryDiagnostics::run();
    case CommandLine::Action::checkUpdate:
        return checkUpdate(argc, argv);
    case CommandLine::Action::diskDiagnose:
        return varnet::DiskDiagnostics::run(line.folders);
    case CommandLine::Action::storageDiagnose:
        return varnet::StorageDiagnostics::run(line.folders);
    case CommandLine::Action::diagnose:
        return varnet::Diagnostics::run();
    case CommandLine::Action::benchmark:
        return varnet::Diagnostics::benchmark(line.seconds);
    case CommandLine::Action::integration:
        return varnet::Diagnostics::integration();
    case CommandLine::Action::renderBattery:
    case CommandLine::Action::renderCloud:
    case CommandLine::Action::renderCollection:
    case CommandLine::Action::renderLocalization:
    case CommandLine::Action::renderMarketing:
    case CommandLine::Action::renderPreviews:
    case CommandLine::Action::renderReports:
    case CommandLine::Action::renderStorage:
        return render(line, argc, argv);
    case CommandLine::Action::start:
        if (!hasDisplay()) return varnet::Diagnostics::liveReading();
        return varnet::ApplicationDelegate::run(
            argc, argv,
            {.showWindow = line.showWindow, .showSettings = line.showSettings, .login = line.login});
    }
    return badUsage;
}

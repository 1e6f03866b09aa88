#pragma once

#include <QStringList>
#include <gtest/gtest.h>

namespace varnet::test {

/// Gathers what Qt and QML complain of while it lives: complaints fail the test.
class QmlWarnings {
public:
    QmlWarnings() {
        gathered().clear();
        qInstallMessageHandler(gather);
    }
    QmlWarnings(const QmlWarnings&) = delete;
    QmlWarnings& operator=(const QmlWarnings&) = delete;
    ~QmlWarnings() {
        qInstallMessageHandler(nullptr);
        EXPECT_TRUE(gathered().isEmpty()) << gathered().join('\n').toStdString();
    }

private:
    static QStringList& gathered() {
        static QStringList list;
        return list;
    }
    static void gather(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (type == QtDebugMsg || type == QtInfoMsg) return;
        if (QByteArrayView(context.category).startsWith("qt.qpa") || text.startsWith("QStandardPaths"))
            return;
        gathered().append(text);
    }
};

} // namespace varnet::test

// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

namespace {

/// Connections by name fail only with a message at run time: that is a failure of the test.
void failOnConnectWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    // The offscreen platform says such things of every window.
    if (message.startsWith(QLatin1String("This plugin does not support ")))
        return;
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    if (type == QtFatalMsg)
        std::abort();
    if (message.startsWith(QLatin1String("QObject::connect:")))
        ADD_FAILURE() << message.toStdString();
}

/// Every test starts with an empty undo stack and without a message handler.
class CleanState : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override
    {
        dzUndoStack->clearAll();
        dzApp->setMessageHandler(DzApp::MessageHandler());
    }
    void OnTestEnd(const testing::TestInfo&) override { dzUndoStack->clearAll(); }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Numbers with a comma must never reach text or files.
    if (qEnvironmentVariableIsSet("VIREO_TEST_COMMA_LOCALE"))
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // Windows of tests are drawn nowhere unless somebody wants to look at them.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    qInstallMessageHandler(failOnConnectWarning);
    DzApp host;
    QString error;
    if (!host.getPluginMgr()->loadPlugin(QStringLiteral(VIREO_MODULE), &error)) {
        std::fprintf(stderr, "%s\n", error.toUtf8().constData());
        return 1;
    }
    testing::UnitTest::GetInstance()->listeners().Append(new CleanState);
    return RUN_ALL_TESTS();
}

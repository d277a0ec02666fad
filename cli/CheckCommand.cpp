// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CheckReport.h"
#include "Command.h"
#include "SceneSurfaces.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <CLI/CLI.hpp>

namespace {

using Json = nlohmann::ordered_json;

/// Files that one process checks: enough that its start does not count. More are shared among
/// processes, since networks are written with one memory of bricks a process.
const int filesAtOnce = 48;

struct CheckCommandOptions {
    std::vector<std::string> files;
    std::string renderer = "luxrender";
    bool json = false;
    bool all = false;

    ReportOptions report() const { return { all, renderer == "luxcore" }; }
};

/// The files of a folder that can be checked, and of the folders in it, by name. Meshes that
/// another program wrote hold nothing of ours.
QStringList filesIn(const QString& folder)
{
    QStringList files;
    QDirIterator all(folder, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        if (isCheckable(path) && !path.endsWith(QLatin1String(".obj"), Qt::CaseInsensitive))
            files.append(path);
    }
    files.sort();
    return files;
}

QStringList chosenFiles(const std::vector<std::string>& arguments)
{
    QStringList files;
    for (const std::string& argument : arguments) {
        const QString path = argumentText(argument);
        if (QFileInfo(path).isDir()) {
            files += filesIn(path);
            continue;
        }
        if (!isCheckable(path))
            failWrongUse(QStringLiteral("cannot check %1: its name ends in none of %2; see vireo "
                                        "check --help")
                             .arg(path, QString::fromStdString(checkableHelp())));
        files.append(path);
    }
    return files;
}

/// Checks many files on all cores, in processes that each run this command with some of them.
class SharedCheck : public QObject
{
public:
    SharedCheck(const QStringList& files, const CheckCommandOptions& options)
        : m_files(files)
        , m_options(options)
        , m_reports(static_cast<size_t>(files.size()))
    {
        for (int begin = 0; begin < files.size(); begin += filesAtOnce)
            m_waiting.append({ begin, qMin(filesAtOnce, files.size() - begin) });
    }

    std::vector<Json> run()
    {
        const int count = qMax(1, QThread::idealThreadCount());
        for (int i = 0; i < count; ++i)
            startNext();
        if (m_running > 0)
            m_loop.exec();
        return std::move(m_reports);
    }

private:
    struct Batch {
        int begin;
        int count;
    };

    void startNext()
    {
        if (m_waiting.isEmpty()) {
            if (m_running == 0)
                m_loop.quit();
            return;
        }
        const Batch batch = m_waiting.takeFirst();
        QStringList arguments { QStringLiteral("check"), QStringLiteral("--json"),
            QStringLiteral("--renderer"), QString::fromStdString(m_options.renderer) };
        if (m_options.all)
            arguments.append(QStringLiteral("--all"));
        arguments.append(QStringLiteral("--"));
        arguments += m_files.mid(batch.begin, batch.count);
        auto* process = new QProcess(this);
        // What it says on standard error is the user's to see.
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        connect(process,
            static_cast<void (QProcess::*)(int, QProcess::ExitStatus)>(&QProcess::finished), this,
            [this, process, batch] { take(process, batch); });
        connect(process, &QProcess::errorOccurred, this,
            [this, process, batch](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart)
                    take(process, batch);
            });
        ++m_running;
        process->start(QCoreApplication::applicationFilePath(), arguments, QIODevice::ReadOnly);
    }

    void take(QProcess* process, Batch batch)
    {
        const QByteArray output = process->readAllStandardOutput();
        Json reports = Json::parse(output.constData(), output.constData() + output.size(), nullptr,
            /*allow_exceptions=*/false);
        process->deleteLater();
        --m_running;
        if (reports.is_array() && reports.size() == static_cast<size_t>(batch.count)) {
            for (int i = 0; i < batch.count; ++i)
                finish(batch.begin + i, std::move(reports[static_cast<size_t>(i)]));
        } else if (batch.count > 1) {
            // One of them ended the process; alone each tells which.
            for (int i = 0; i < batch.count; ++i)
                m_waiting.append({ batch.begin + i, 1 });
        } else {
            Json report;
            report["file"] = m_files.at(batch.begin).toStdString();
            report["findings"] = Json::array();
            report["error"] = QStringLiteral("cannot check %1: the check of it ended unexpectedly; "
                                             "please report this with the file")
                                  .arg(m_files.at(batch.begin))
                                  .toStdString();
            finish(batch.begin, std::move(report));
        }
        startNext();
    }

    void finish(int file, Json report)
    {
        m_reports[static_cast<size_t>(file)] = std::move(report);
        m_progress.tell(QStringLiteral("checking"), ++m_done, m_files.size());
    }

    QStringList m_files;
    const CheckCommandOptions& m_options;
    std::vector<Json> m_reports;
    QList<Batch> m_waiting;
    QEventLoop m_loop;
    Progress m_progress;
    int m_running = 0;
    int m_done = 0;
};

std::vector<Json> reportsOf(const QStringList& files, const CheckCommandOptions& options)
{
    if (files.size() > filesAtOnce)
        return SharedCheck(files, options).run();
    std::vector<Json> reports;
    for (const QString& file : files)
        reports.push_back(reportOf(file, options.report()));
    return reports;
}

void runCheck(const CheckCommandOptions& options)
{
    const std::vector<Json> reports = reportsOf(chosenFiles(options.files), options);
    bool isAnyBad = false;
    QByteArray lines;
    for (const Json& report : reports) {
        isAnyBad = isAnyBad || isBad(report);
        if (options.json)
            continue;
        if (report.contains("error"))
            notice(QString::fromStdString(report["error"].get<std::string>()).simplified());
        for (const Json& finding : report["findings"])
            lines += findingLine(finding).toUtf8() + '\n';
    }
    if (options.json)
        lines = QByteArray::fromStdString(
            Json(reports).dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    printText(lines);
    if (isAnyBad)
        throw CommandError { QString(), ExitFailed };
}

} // namespace

void addCheckCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand("check",
        "Tell what the renderer does with networks, scenes and LuxRender texts that their "
        "values do not say");
    auto options = std::make_shared<CheckCommandOptions>();
    command
        ->add_option("FILE", options->files, "Files (" + checkableHelp() + ") and folders of them")
        ->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->add_flag("--all", options->all,
        "Tell also of lines that lose nothing and of bricks that are not rendered");
    command
        ->add_option("--renderer", options->renderer,
            "luxrender, or luxcore to tell also where LuxCore shows something else")
        ->check(CLI::IsMember({ "luxrender", "luxcore" }))
        ->capture_default_str();
    command->footer("The exit code is 1 if something is refused by the renderer or ends it.");
    command->callback([options] { runCheck(*options); });
}

#include "shell/ServiceActions.h"

#include "shell/JobQueue.h"
#include "shell/ServiceBus.h"

#include <QIODevice>
#include <QTimer>

namespace tallyvox {

ServiceActions::ServiceActions(ServiceContext context, JobQueue& queue)
    : m_context(std::move(context)), m_queue(queue)
{}

bool ServiceActions::activateAction(const QString& name, const QVariantList& parameter,
                                    const QVariantMap& platformData)
{
    const SelectionSource source =
        platformData.value(QString::fromLatin1(selectionDataKey)).toString() ==
                QLatin1String("clipboard")
            ? SelectionSource::Clipboard
            : SelectionSource::Primary;
    if (parameter.isEmpty()) {
        queueRequest(name, std::nullopt, source);
        return true;
    }
    // A parameter that holds no pasteboard is a request without one: it does nothing
    // beyond raising the window and the quit timer.
    enqueue({name, pasteboardFromBus(parameter)}, std::nullopt);
    return true;
}

void ServiceActions::queueRequest(const QString& name, std::optional<Pasteboard> pasteboard,
                                  SelectionSource source)
{
    if (pasteboard) {
        enqueue({name, std::move(pasteboard)}, std::nullopt);
    } else {
        enqueue({name, std::nullopt}, source);
    }
}

void ServiceActions::enqueue(ServiceRequest request, std::optional<SelectionSource> selection)
{
    // From the event loop, so the bus call is answered before anything shows.
    QTimer::singleShot(0, this, [this, request = std::move(request), selection]() mutable {
        add(std::move(request), selection);
    });
}

void ServiceActions::add(ServiceRequest request, std::optional<SelectionSource> selection)
{
    m_queue.add([this, request = std::move(request), selection](JobQueue::Done done) mutable {
        if (selection) {
            request.pasteboard = m_context.words.desktop.readSelection(*selection);
        }
        // The queue runs one request at a time, so one job is in hand at most.
        m_job = HandleServicePerform(m_context, request);
        connect(m_job.get(), &FileJob::ready, this, [this, done = std::move(done)] {
            m_job->commit();
            m_anyFailed = m_anyFailed || m_job->failed();
            // Its ready() may be the signal being delivered now.
            m_job.release()->deleteLater();
            done();
        });
    });
}

QList<Pasteboard> commandLinePasteboards(const CommandLine& commandLine, Desktop& desktop,
                                         QIODevice& input)
{
    switch (commandLine.serviceSource) {
    case ServiceSource::Files: {
        QList<Pasteboard> pasteboards;
        for (const QString& file : commandLine.files) {
            pasteboards.append(pasteboardWithFile(file));
        }
        return pasteboards;
    }
    case ServiceSource::Text:
        return {pasteboardWithText(commandLine.serviceText)};
    case ServiceSource::Stdin:
        return {pasteboardWithBytes(input.readAll())};
    case ServiceSource::Selection:
    case ServiceSource::Clipboard:
        return {desktop.readSelection(commandLineSelection(commandLine))};
    case ServiceSource::None:
        break;
    }
    return {};
}

SelectionSource commandLineSelection(const CommandLine& commandLine)
{
    return commandLine.serviceSource == ServiceSource::Clipboard ? SelectionSource::Clipboard
                                                                 : SelectionSource::Primary;
}

} // namespace tallyvox

#include "shell/ServiceRequests.h"

#include "shell/ServiceBus.h"

#include <QIODevice>
#include <QTimer>

namespace tallyvox {

ServiceActions::ServiceActions(ServiceContext context) : m_context(std::move(context)) {}

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
    enqueue({{name, pasteboardFromBus(parameter)}, std::nullopt});
    return true;
}

void ServiceActions::queueRequest(const QString& name, std::optional<Pasteboard> pasteboard,
                                  SelectionSource source)
{
    if (pasteboard) {
        enqueue({{name, std::move(pasteboard)}, std::nullopt});
    } else {
        enqueue({{name, std::nullopt}, source});
    }
}

void ServiceActions::enqueue(Pending pending)
{
    m_pending.append(std::move(pending));
    QTimer::singleShot(0, this, &ServiceActions::performPending);
}

void ServiceActions::performPending()
{
    // Called again from an alert's own loop, it leaves the new request to the outer call.
    if (m_performing) {
        return;
    }
    m_performing = true;
    while (!m_pending.isEmpty()) {
        Pending pending = m_pending.takeFirst();
        if (pending.selection) {
            pending.request.pasteboard = m_context.words.desktop.readSelection(*pending.selection);
        }
        HandleServicePerform(m_context, pending.request);
    }
    m_performing = false;
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

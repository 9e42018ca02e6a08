#include "shell/ServiceRequests.h"

#include "shell/ServiceBus.h"
#include "shell/WorkGate.h"

#include <QIODevice>
#include <QTimer>

namespace tallyvox {

ServiceActions::ServiceActions(ServiceContext context, WorkGate* gate)
    : m_context(std::move(context)), m_gate(gate)
{
    if (m_gate) {
        connect(m_gate, &WorkGate::released, this, [this] {
            if (!m_pending.isEmpty()) {
                performPending();
            }
        });
    }
}

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
    // A batch run is waiting for its indexer: these requests follow when it has ended.
    if (m_gate && !m_gate->tryEnter()) {
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
    if (m_gate) {
        m_gate->leave();
    }
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

#include "tests/common/FakeIndexer.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTimer>

#include <algorithm>

namespace tallyvox::testing {

WordTable countWhiteSpaceWords(const QByteArray& text, int ngramLength)
{
    QMap<QString, qint64> counts;
    QByteArrayList words = text.simplified().split(' ');
    words.removeAll(QByteArray());
    const qsizetype n = std::max(ngramLength, 1);
    for (qsizetype i = 0; i + n <= words.size(); ++i) {
        ++counts[QString::fromUtf8(words.mid(i, n).join(' '))];
    }
    WordTable table;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        table.insert(it.key(), it.value());
    }
    return table;
}

class FakeRun final : public IndexerRun {
public:
    FakeRun(FakeIndexer& indexer, FakeIndexer::Script script, QString cutReasons)
        : m_indexer(indexer), m_script(std::move(script)), m_cutReasons(std::move(cutReasons))
    {
        m_indexer.m_mostAtOnce = std::max(m_indexer.m_mostAtOnce, ++m_indexer.m_running);
        const auto reports = static_cast<int>(m_script.progress.size());
        for (int i = 0; i < reports; ++i) {
            const auto at = m_script.delay * (i + 1) / (reports + 1);
            QTimer::singleShot(at, this, [this, i] {
                if (!isFinished()) {
                    emit progressed(m_script.progress.at(i).first, m_script.progress.at(i).second);
                }
            });
        }
        QTimer::singleShot(m_script.delay, this, [this] { end(m_script.ending); });
    }
    ~FakeRun() override
    {
        if (!m_ended) {
            --m_indexer.m_running;
        }
    }
    FakeRun(const FakeRun&) = delete;
    FakeRun& operator=(const FakeRun&) = delete;

    void stop() override { end(IndexerEnding::Stopped); }

private:
    void end(IndexerEnding ending)
    {
        if (m_ended) {
            return;
        }
        m_ended = true;
        --m_indexer.m_running;
        const bool leftTable =
            ending == IndexerEnding::Complete || ending == IndexerEnding::Partial;
        if (leftTable && m_script.table) {
            if (ending == IndexerEnding::Partial) {
                setCutReasons(m_cutReasons);
            }
            if (m_script.typeRuns) {
                setTypeRuns(*m_script.typeRuns);
            }
            finish(ending, m_script.table);
        } else {
            finish(leftTable ? IndexerEnding::Failed : ending);
        }
    }

    FakeIndexer& m_indexer;
    FakeIndexer::Script m_script;
    QString m_cutReasons;
    bool m_ended = false;
};

void FakeIndexer::script(const QString& path, Script script, const QString& executableName)
{
    m_scripts.emplace(executableName + QLatin1Char(' ') + path, std::move(script));
}

std::unique_ptr<IndexerRun> FakeIndexer::start(const QString& posixPath,
                                               const QString& executableName, int ngramLength,
                                               bool typeRuns)
{
    QString call = executableName + QLatin1Char(' ') + posixPath;
    if (ngramLength > 1) {
        call += QStringLiteral(" --ngram-length %1").arg(ngramLength);
    }
    Script script;
    if (const auto it = m_scripts.constFind(call); it != m_scripts.cend()) {
        script = *it;
    } else {
        script.delay = m_defaultDelay;
        QFile file(posixPath);
        if (m_defaultTable) {
            script.table = m_defaultTable;
        } else if (QFileInfo(posixPath).isDir()) {
            // A package, such as an .rtfd folder: read, and no words found here.
            script.table = WordTable();
        } else if (file.open(QIODevice::ReadOnly)) {
            script.table = countWhiteSpaceWords(file.readAll(), ngramLength);
        }
    }
    if (typeRuns) {
        call += QStringLiteral(" --sttr");
    } else {
        script.typeRuns.reset();
    }
    m_calls.append(call);
    auto run = std::make_unique<FakeRun>(*this, std::move(script), m_cutReasons.value(posixPath));
    if (onStart) {
        onStart(call);
    }
    return run;
}

} // namespace tallyvox::testing

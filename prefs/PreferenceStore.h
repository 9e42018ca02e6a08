#pragma once

#include "prefs/PreferenceKeys.h"

#include <QByteArray>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>

namespace tallyvox {

/// The application's typed settings in a property-list file. Nothing is cached:
/// every read goes to the file, so a change made by another process or a moment
/// ago is seen at once, and every write replaces the file atomically before it returns.
class PreferenceStore {
public:
    /// $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist
    static QString defaultPath();

    explicit PreferenceStore(QString path = defaultPath());

    const QString& path() const { return m_path; }

    /// The settings as they are stored now, read once: the copy's getters all give what
    /// the file held at this moment, however it changes later (a list is made with one set
    /// of settings). Its writers still write the file.
    PreferenceStore snapshot() const;

    /// The alert to show when something other than a file (a named pipe, a device, a
    /// folder) stands at the settings file's path: it is never read, and the defaults apply.
    std::optional<QString> refusal() const;

    bool GetQuitWhenDone() const { return readBool(prefs::QuitWhenDone); }
    bool GetIncludeFrequency() const { return readBool(prefs::IncludeFrequency); }
    SortBy GetSortBy() const { return readChoice(prefs::SortBy); }
    SeparateBy GetSeparateBy() const { return readChoice(prefs::SeparateBy); }
    LineStyle GetLineStyle() const { return readChoice(prefs::LineStyle); }

    bool readBool(const prefs::BoolKey& key) const;
    qint32 readNumber(const prefs::NumberKey& key) const;
    /// The stored number as the choice it names; unnamed values come back as they are.
    template <typename Choice>
    Choice readChoice(const prefs::ChoiceKey<Choice>& key) const
    {
        return static_cast<Choice>(readNumber(key.number()));
    }
    qint32 readInteger(const prefs::IntegerKey& key) const;
    QString readString(const prefs::StringKey& key) const;
    double readReal(const prefs::RealKey& key) const;
    /// The stored data of a key, or nothing when it is missing or not data.
    std::optional<QByteArray> readData(const char* key) const;

    // Each writer returns false, leaving the old value, when the file cannot be written.
    bool writeBool(const prefs::BoolKey& key, bool value);
    bool writeNumber(const prefs::NumberKey& key, qint16 value);
    /// Stores a pop-up's value as it is, a named choice or not.
    template <typename Choice>
    bool writeChoice(const prefs::ChoiceKey<Choice>& key, qint16 value)
    {
        return writeNumber(key.number(), value);
    }
    template <typename Choice>
    bool writeChoice(const prefs::ChoiceKey<Choice>& key, Choice value)
    {
        return writeNumber(key.number(), static_cast<qint16>(value));
    }
    bool writeData(const char* key, const QByteArray& value);
    bool writeInteger(const prefs::IntegerKey& key, qint32 value);
    bool writeString(const prefs::StringKey& key, const QString& value);
    bool writeReal(const prefs::RealKey& key, double value);

    /// The stored main-window bounds, or nothing unless they are exactly 8 bytes of data.
    std::optional<QRect> readWindowBounds() const;
    bool writeWindowBounds(const QRect& bounds);

private:
    /// The stored item of key, from the snapshot or from the file as it is now; owner
    /// keeps what it points into alive.
    void* item(const char* key, std::shared_ptr<void>& owner) const;

    QString m_path;
    /// The dictionary a snapshot was read into; none: every read goes to the file.
    std::shared_ptr<void> m_frozen;
};

/// Window bounds as 8 bytes: top, left, bottom, right, each a big-endian signed
/// 16-bit integer, with bottom = top + height and right = left + width.
QByteArray encodeWindowBounds(const QRect& bounds);
std::optional<QRect> decodeWindowBounds(const QByteArray& bytes);

} // namespace tallyvox

// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/targetnames.h>

#include <apps/lorix/text.h>

#include <QStringList>

namespace lorix::cli {

namespace {

constexpr qsizetype longestComponent = 200;
constexpr qsizetype longestSuffix = 20;
// Paths of more folders than that are no longer somebody's order of things.
constexpr qsizetype deepest = 32;

bool isReserved(const QString& component)
{
    const QString base = component.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    for (const char* name : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"})
        if (base == QLatin1String(name))
            return true;
    return base.size() == 4 &&
           (base.startsWith(QLatin1String("COM")) || base.startsWith(QLatin1String("LPT"))) &&
           (base.at(3).isDigit() || QStringLiteral("\u00b9\u00b2\u00b3").contains(base.at(3)));
}

QString withoutForbidden(const QString& component)
{
    // What printable() would show as an escape is harmful in a name too.
    QString result;
    for (qsizetype i = 0; i < component.size(); ++i) {
        const bool pair = component.at(i).isHighSurrogate() && i + 1 < component.size() &&
                          component.at(i + 1).isLowSurrogate();
        const QString character = component.mid(i, pair ? 2 : 1);
        const bool forbidden = QStringLiteral("<>:\"|?*").contains(character);
        result += forbidden || printable(character) != character ? QStringLiteral("_") : character;
        i += pair ? 1 : 0;
    }
    return result;
}

// Where the suffix of a name begins: the name's end when it has none.
qsizetype suffixStart(const QString& component)
{
    const qsizetype dot = component.lastIndexOf(QLatin1Char('.'));
    return dot > 0 && component.size() - dot <= longestSuffix ? dot : component.size();
}

QString shortened(QString component)
{
    const QString suffix = component.mid(suffixStart(component));
    component.truncate(qMin(suffixStart(component), longestComponent));
    while (component.toUtf8().size() + suffix.toUtf8().size() > longestComponent)
        component.chop(component.back().isLowSurrogate() ? 2 : 1);
    return component + suffix;
}

// Empty where nothing is left.
QString harmlessComponent(const QString& component)
{
    QString result = withoutForbidden(component).trimmed();
    // Some systems drop these at the end, which makes other names of them.
    while (result.endsWith(QLatin1Char('.')) || result.endsWith(QLatin1Char(' ')))
        result.chop(1);
    if (result.isEmpty())
        return result;
    return shortened(isReserved(result) ? QLatin1Char('_') + result : result);
}

QString withoutDrive(const QString& name)
{
    const bool drive = name.size() >= 2 && name.at(1) == QLatin1Char(':') && name.at(0).isLetter();
    return drive ? name.mid(2) : name;
}

// The same for names that some file system takes for the same.
QString foldedName(const QString& name)
{
    return name.normalized(QString::NormalizationForm_C).toCaseFolded();
}

QString numbered(const QString& name, int number)
{
    const qsizetype start = name.lastIndexOf(QLatin1Char('/')) + 1;
    const qsizetype at = start + suffixStart(name.mid(start));
    return name.left(at) + QStringLiteral("-%1").arg(number) + name.mid(at);
}

} // namespace

QString harmlessName(const QString& embeddedName)
{
    QString name = embeddedName;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    QStringList components;
    for (const QString& component : withoutDrive(name).split(QLatin1Char('/'))) {
        const QString harmless = harmlessComponent(component);
        if (!harmless.isEmpty())
            components.append(harmless);
    }
    if (components.isEmpty())
        return QStringLiteral("file");
    return components.mid(qMax<qsizetype>(0, components.size() - deepest)).join(QLatin1Char('/'));
}

TargetNames::TargetNames(const QList<FileTag>& files)
{
    for (const FileTag& file : files)
        m_names.insert(file.id,
                       uniqueName(withFreeFolders(harmlessName(decodedField(file.filename)))));
}

// The name with other folders in place of those that are files already.
QString TargetNames::withFreeFolders(const QString& name)
{
    const QStringList components = name.split(QLatin1Char('/'));
    QString folder;
    for (qsizetype i = 0; i + 1 < components.size(); ++i) {
        folder += components.at(i);
        const QString folded = foldedName(folder);
        if (m_takenFiles.contains(folded)) {
            QString& other = m_insteadOf[folded];
            for (int number = 2; other.isEmpty(); ++number) {
                const QString next = numbered(folder, number);
                if (!isTaken(next))
                    other = next;
            }
            folder = other;
        }
        m_takenFolders.insert(foldedName(folder));
        folder += QLatin1Char('/');
    }
    return folder + components.constLast();
}

QString TargetNames::uniqueName(const QString& name)
{
    if (!isTaken(name))
        return take(name);
    // Goes on where the last file of this name has ended, or many of the same
    // name would take quadratic time.
    int& number = m_lastNumber[foldedName(name)];
    for (number = qMax(number, 1);;) {
        const QString next = numbered(name, ++number);
        if (!isTaken(next))
            return take(next);
    }
}

bool TargetNames::isTaken(const QString& name) const
{
    const QString folded = foldedName(name);
    return m_takenFiles.contains(folded) || m_takenFolders.contains(folded);
}

QString TargetNames::take(const QString& name)
{
    m_takenFiles.insert(foldedName(name));
    return name;
}

} // namespace lorix::cli

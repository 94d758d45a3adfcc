#include "Shell/QuestionText.h"

#include "Core/Texts.h"
#include "Core/Visible.h"
#include "Shell/TextDifference.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// More characters than any row can show.
constexpr qsizetype kLongestRow = 400;
/// Values nested deeper than this stay on one line: with thousands of them, the indentation alone would take gigabytes.
constexpr int kMostIndents = 6;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Question)
};

/// The tools of Claude Code whose input has one field that says what they do. Other fields of the input are shown too.
struct KnownTool {
    QLatin1StringView name;
    QLatin1StringView field;
    enum class Kind : quint8 { Text, File, Whole, Edit, Plan } kind = Kind::Text;
    bool isFile() const { return kind == Kind::File || kind == Kind::Whole || kind == Kind::Edit; }
};
constexpr std::array kKnownTools{
    KnownTool{"Bash"_L1, "command"_L1},
    KnownTool{"WebFetch"_L1, "url"_L1},
    KnownTool{"WebSearch"_L1, "query"_L1},
    KnownTool{"Glob"_L1, "pattern"_L1},
    KnownTool{"Grep"_L1, "pattern"_L1},
    KnownTool{"Read"_L1, "file_path"_L1, KnownTool::Kind::File},
    KnownTool{"Write"_L1, "file_path"_L1, KnownTool::Kind::Whole},
    KnownTool{"Edit"_L1, "file_path"_L1, KnownTool::Kind::Edit},
    KnownTool{"MultiEdit"_L1, "file_path"_L1, KnownTool::Kind::Edit},
    KnownTool{"NotebookEdit"_L1, "notebook_path"_L1, KnownTool::Kind::Whole},
    KnownTool{"ExitPlanMode"_L1, "plan"_L1, KnownTool::Kind::Plan},
};

/// The table's entry, if the input has that field as a text. For any other tool the whole input is shown: a field that happens
/// to be called "command" may be the least of it.
const KnownTool *knownTool(const Question &question)
{
    const auto known = std::ranges::find(kKnownTools, question.tool, &KnownTool::name);
    if (known == kKnownTools.end() || question.input.toObject().value(known->field).toString().isEmpty())
        return nullptr;
    return &*known;
}

/// A value as JSON; a top-level string without its quotation marks.
QString written(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray())
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    if (value.isObject())
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.sliced(1, list.size() - 2));
}

bool isNothing(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull() || (value.isObject() && value.toObject().isEmpty())
        || (value.isString() && value.toString().isEmpty()) || (value.isArray() && value.toArray().isEmpty());
}

/// A string as JSON writes it, so that it can't pose as one more argument.
QString quoted(const QString &text)
{
    const QString list = written(QJsonArray{text});
    return list.sliced(1, list.size() - 2);
}

bool isWord(const QString &text)
{
    const auto fits = [](QChar c) { return (c.unicode() < 0x80 && c.isLetterOrNumber()) || u"_-."_s.contains(c); };
    return !text.isEmpty() && std::ranges::all_of(text, fits);
}

/// Compact JSON with a line for each value.
QString indented(const QString &compact)
{
    QString text;
    int depth = 0;
    bool inString = false;
    const auto breakLine = [&text](int indents) { text += u'\n' + QString(4 * indents, u' '); };
    for (qsizetype i = 0; i < compact.size(); ++i) {
        const QChar c = compact.at(i);
        if (!inString && (c == u']' || c == u'}') && depth-- <= kMostIndents)
            breakLine(depth);
        text += c;
        if (inString) {
            if (c == u'\\')
                text += compact.at(++i);
            inString = c != u'"';
        } else if (c == u'[' || c == u'{') {
            const QChar next = compact.at(i + 1);
            if (next == u']' || next == u'}')
                text += compact.at(++i);
            else if (++depth <= kMostIndents)
                breakLine(depth);
        } else if (c == u',' && depth <= kMostIndents) {
            breakLine(depth);
        } else {
            text += c == u',' || c == u':' ? u" "_s : QString();
            inString = c == u'"';
        }
    }
    return text;
}

/// The beginning of the arguments on one line.
QString argumentsLine(const QJsonValue &input)
{
    if (!input.isObject())
        return isNothing(input) ? QString() : written(input).left(kLongestRow);
    QString line;
    const QJsonObject object = input.toObject();
    for (auto each = object.begin(); each != object.end() && line.size() < kLongestRow; ++each) {
        line += line.isEmpty() ? QString() : u", "_s;
        const QString key = each.key().left(kLongestRow);
        line += (isWord(key) ? key : quoted(key)) + ": "_L1;
        line += each->isString() ? quoted(each->toString().left(kLongestRow)) : written(*each).left(kLongestRow);
    }
    return line;
}

/// Where a file is, relative to the session's folder; empty if it's directly in it.
QString placeOf(const QString &path, const std::optional<QString> &folder)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (slash < 0)
        return {};
    const QString place = slash == 0 ? u"/"_s : path.left(slash);
    if (!folder || folder->isEmpty() || place.contains("/../"_L1) || place.endsWith("/.."_L1))
        return place;
    if (place == *folder)
        return {};
    return place.startsWith(*folder + u'/') ? place.sliced(folder->size() + 1) : place;
}

class Parts {
public:
    using Look = QuestionPart::Look;

    explicit Parts(const Question &question)
        : m_question(question)
        , m_rest(question.input.toObject())
    {
    }

    QList<QuestionPart> all()
    {
        if (const KnownTool *known = knownTool(m_question))
            takeKnown(*known);
        else
            takeArguments();
        field(Texts::tr("Described as"), m_description, Look::Words);
        rest(m_rest);
        field(Texts::tr("Session"), m_question.session, Look::Words);
        field(Texts::tr("Folder"), m_question.cwd.value_or(QString()), Look::Exact);
        return m_parts;
    }

private:
    static QString take(QJsonObject &from, QLatin1StringView key)
    {
        const QJsonValue value = from.value(key);
        if (value.isString())
            from.remove(key);
        return value.toString();
    }

    void field(const QString &label, const QString &text, Look look)
    {
        if (!text.isEmpty())
            m_parts.append({label, text, look, true});
    }

    /// Unexpected fields, with their keys: as labels those could pass for ours.
    void rest(const QJsonObject &input)
    {
        if (!input.isEmpty())
            field(Texts::tr("Also given"), written(input), Look::Exact);
    }

    void block(const QString &label, const QString &text, Look look)
    {
        if (!text.isEmpty())
            m_parts.append({label, text, look, false});
    }

    void takeKnown(const KnownTool &known)
    {
        const QString told = take(m_rest, known.field);
        if (known.kind == KnownTool::Kind::Plan)
            block(Texts::tr("Plan"), told, Look::Words);
        else if (known.isFile())
            field(Texts::tr("File"), told, Look::Exact);
        else
            block({}, told, Look::Exact);
        if (known.kind == KnownTool::Kind::Whole)
            m_parts += difference({}, take(m_rest, "content"_L1) + take(m_rest, "new_source"_L1), m_effort);
        else if (known.kind == KnownTool::Kind::Edit)
            takeChanges();
        m_description = take(m_rest, "description"_L1);
    }

    /// What becomes of the file: one replacement, or several.
    void takeChanges()
    {
        // One replacement, unless the input says otherwise.
        if (const QJsonValue all = m_rest.value("replace_all"_L1); all.isBool()) {
            field(Texts::tr("Replaces"), all.toBool() ? Texts::tr("every place in the file") : QString(), Look::Words);
            m_rest.remove("replace_all"_L1);
        }
        m_parts += change(m_rest);
        const QJsonArray edits = m_rest.value("edits"_L1).toArray();
        const bool clear = std::ranges::all_of(edits, [](const QJsonValue &edit) { return edit.isObject(); });
        if (!clear)
            return; // stays among the rest, unchanged
        m_rest.remove("edits"_L1);
        for (int i = 0; i < edits.size(); ++i) {
            QJsonObject edit = edits.at(i).toObject();
            QList<QuestionPart> parts = change(edit);
            if (parts.isEmpty())
                parts.append({{}, {}, Look::Words, false});
            parts.first().label = Texts::tr("Change %1").arg(i + 1);
            m_parts += parts;
            rest(edit);
        }
    }

    QList<QuestionPart> change(QJsonObject &from)
    {
        const QString before = take(from, "old_string"_L1);
        return difference(before, take(from, "new_string"_L1), m_effort);
    }

    void takeArguments()
    {
        if (m_question.tool.startsWith("mcp__"_L1)) {
            // "mcp__SERVER__TOOL"; a server's name may hold underscores too.
            const QString name = m_question.tool.sliced(5);
            const qsizetype split = name.indexOf("__"_L1);
            field(Texts::tr("Server"), split < 0 ? name : name.left(split), Look::Exact);
            field(Texts::tr("Tool"), split < 0 ? QString() : name.sliced(split + 2), Look::Exact);
        } else {
            field(Texts::tr("Tool"), m_question.tool, Look::Exact);
        }
        m_rest = {};
        const QJsonValue &input = m_question.input;
        if (isNothing(input))
            m_parts.append({Texts::tr("Input"), Texts::tr("none"), Look::Words, true});
        else
            block(Texts::tr("Input"), input.isString() ? written(input) : indented(written(input)), Look::Exact);
    }

    const Question &m_question;
    QJsonObject m_rest; ///< what of the input hasn't been told yet
    QString m_description;
    qsizetype m_effort = kMostCompared; ///< for all changes together
    QList<QuestionPart> m_parts;
};

} // namespace

QuestionLine questionLine(const Question &question)
{
    const auto exact = [](const QString &text) { return visibleLine(text, Wording::Exact, kLongestRow); };
    QuestionLine line;
    line.session = visibleLine(question.session, Wording::Prose, kLongestRow);
    line.tool = exact(question.tool);
    const KnownTool *known = knownTool(question);
    if (!known) {
        line.detail = exact(argumentsLine(question.input));
        return line;
    }
    const QString told = question.input.toObject().value(known->field).toString();
    if (known->isFile()) {
        line.detail = exact(lastPathComponent(told));
        line.place = exact(placeOf(told, question.cwd));
    } else {
        line.detail = exact(told);
        line.exact = known->kind != KnownTool::Kind::Plan;
    }
    return line;
}

QList<QuestionPart> questionParts(const Question &question)
{
    return Parts(question).all();
}

} // namespace velto

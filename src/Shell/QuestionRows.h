#pragma once

#include "Shell/QuestionText.h"

#include <QAbstractListModel>

namespace velto {

/// The whole of a question as rows of a list. A part of it is cut into pieces of a few lines, and a piece is made fit to be shown
/// when it comes into sight: so the longest question costs no more than its visible part. UI thread only.
class QuestionRows : public QAbstractListModel {
    Q_OBJECT
public:
    /// The most lines, and about the most characters, of one row.
    static constexpr qsizetype kMostLines = 40;
    static constexpr qsizetype kMostCharacters = 2'000;
    /// About how many characters are announced at most.
    static constexpr qsizetype kMostTold = 800;

    using QAbstractListModel::QAbstractListModel;

    void set(const QList<QuestionPart> &parts);

    /// Everything in words, for a screen reader: each part after its label. Ends in "…" if it was cut.
    QString told() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    enum Role : int { Label = Qt::UserRole, Text, Look, Beside, Continued, Begins, Ends };
    struct Piece {
        qsizetype part;
        qsizetype start;
        qsizetype length;
        bool continued; ///< it begins in the middle of a line
    };

    QList<QuestionPart> m_parts;
    QList<Piece> m_pieces;
};

} // namespace velto

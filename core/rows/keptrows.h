#pragma once

#include <QtCore/QString>
#include <QtCore/qglobal.h>
#include <vector>

namespace core {

/// A copy of what a RowView keeps of a run of slots, to be read while the view goes on changing.
class KeptRows
{
public:
    /// Whether there is a row in the index-th slot of the run.
    bool contains(int index) const { return (states[at(index)] & present) != 0; }
    bool passes(int index) const { return (states[at(index)] & passing) != 0; }
    /// Its words: the key of each sort field, the key of its arrival, the value of each sum.
    const quint64 *words(int index) const { return wordList.data() + at(index) * wordsPerRow; }
    const QString *texts(int index) const { return textList.data() + at(index) * textsPerRow; }

private:
    friend class RowView;

    /// Bits of a state.
    enum State : quint8
    {
        present = 1,
        passing = 2,
        counted = 4,
        outOfPlace = 8
    };
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    std::vector<quint64> wordList;
    std::vector<QString> textList;
    std::vector<quint8> states;
    std::size_t wordsPerRow = 0;
    std::size_t textsPerRow = 0;
};

} // namespace core

#pragma once

#include "words/LemmaList.h"

#include <QStringList>

namespace tallyvox::testing {

/// A lemma list as "form=headword ..." in code-unit order of the forms, to compare whole.
inline QString describe(const LemmaList& list)
{
    QStringList pairs;
    for (auto it = list.headwordOf.cbegin(); it != list.headwordOf.cend(); ++it) {
        pairs.append(it.key() + u'=' + it.value());
    }
    pairs.sort();
    return pairs.join(u' ');
}

} // namespace tallyvox::testing

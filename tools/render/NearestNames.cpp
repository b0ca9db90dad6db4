#include "NearestNames.h"

#include <algorithm>
#include <vector>

int NearestNames::distance (const juce::String& a, const juce::String& b)
{
    const auto x = a.toLowerCase(), y = b.toLowerCase();
    const int n = x.length(), m = y.length();
    std::vector<int> previous ((size_t) m + 1), current ((size_t) m + 1);
    for (int j = 0; j <= m; ++j)
        previous[(size_t) j] = j;

    for (int i = 1; i <= n; ++i)
    {
        current[0] = i;
        for (int j = 1; j <= m; ++j)
        {
            const int substitution = previous[(size_t) j - 1] + (x[i - 1] == y[j - 1] ? 0 : 1);
            current[(size_t) j] =
                std::min ({ previous[(size_t) j] + 1, current[(size_t) j - 1] + 1, substitution });
        }
        std::swap (previous, current);
    }
    return previous[(size_t) m];
}

juce::StringArray NearestNames::find (const juce::String& query, const juce::StringArray& names, int maxCount)
{
    const auto q = query.trim().toLowerCase();
    if (q.isEmpty())
        return {};

    // A typo costs about one edit in three characters; two are always allowed.
    const int allowed = std::max (2, q.length() / 3);

    std::vector<int> scores;
    int best = allowed + 1;
    for (const auto& name : names)
    {
        const auto n = name.toLowerCase();
        int score = distance (q, n);
        if (n.isNotEmpty() && (n.contains (q) || q.contains (n)))
            score = std::min (score, 1);
        scores.push_back (score);
        best = std::min (best, score);
    }

    juce::StringArray result;
    if (best > allowed)
        return result;
    for (int i = 0; i < names.size() && result.size() < maxCount; ++i)
        if (scores[(size_t) i] == best)
            result.addIfNotAlreadyThere (names[i]);
    return result;
}

juce::String NearestNames::didYouMean (const juce::String& query, const juce::StringArray& names)
{
    const auto nearest = find (query, names);
    if (nearest.isEmpty())
        return {};

    juce::String text ("; did you mean ");
    for (int i = 0; i < nearest.size(); ++i)
    {
        if (i > 0)
            text << (i == nearest.size() - 1 ? " or " : ", ");
        text << "'" << nearest[i] << "'";
    }
    return text + "?";
}

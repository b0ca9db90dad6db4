#pragma once

#include <juce_core/juce_core.h>

/** Suggestions for a name that matched nothing: the known names closest to it by edit distance. */
class NearestNames
{
public:
    /** Levenshtein distance of the two texts, ignoring case. */
    static int distance (const juce::String& a, const juce::String& b);

    /** The names nearest to `query`, at most `maxCount`, in the order given; none if nothing is near
        enough to be a likely typo. A name containing the query, or contained in it, counts as near. */
    static juce::StringArray find (const juce::String& query, const juce::StringArray& names,
                                   int maxCount = 3);

    /** "; did you mean 'A' or 'B'?" for the nearest names, or an empty text. */
    static juce::String didYouMean (const juce::String& query, const juce::StringArray& names);
};

#pragma once

/** The residual of a band-limited unit step: the band-limited step minus the ideal step that the held
    value makes at once. Row 0 is -1.0, so a step just begun gives back the old value; the rows rise
    through the edge and its ringing to exactly 0.0 from row 4223 on. 128 rows make one core sample,
    so at a speed of 128 rows per sample a step is over after 33 samples.

    The values are computed by tools/steptable and live in StepTableData.cpp.
*/
struct StepTable
{
    static constexpr int size = 4229; // rows
    static constexpr int rowsPerSample = 128;
    static constexpr double silentRow = 4227.0; // of value 0.0, where a finished step waits for its slot
    static const double values[size];
};

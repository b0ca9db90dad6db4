#pragma once

/** The effect's eighteen parameters. One number names a parameter everywhere: it is the host's index,
    the index in the parameter table and the core's index, in the order of the table. */
namespace ParameterIndex
{
enum : int
{
    preamp,
    leftBits,
    leftFrequency,
    leftLinkFreq,
    leftFilterType,
    leftCutoff,
    leftReso,
    rightBits,
    rightFrequency,
    rightLinkFreq,
    rightFilterType,
    rightCutoff,
    rightReso,
    linkChannels,
    fx,
    outputVolume,
    leftFilterOrder,
    rightFilterOrder,
    count
};
} // namespace ParameterIndex

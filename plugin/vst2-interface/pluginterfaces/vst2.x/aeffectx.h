#pragma once

// JUCE's plug-in and host code size a speaker arrangement as the original interface declared it, with
// room for eight speakers in the structure itself; Debian's clean-room header declares an open array
// instead, so JUCE would write the speakers of a stereo arrangement past the end of what it allocates.
// Both see the layout here, with the room for eight speakers they count on.
#include_next <pluginterfaces/vst2.x/aeffectx.h>

typedef struct
{
    int type;
    int numChannels;
    VstSpeakerProperties speakers[8];
} VstSpeakerArrangementWithRoom;

#define VstSpeakerArrangement VstSpeakerArrangementWithRoom

// The same for a pin's properties: the original interface ends them with 48 spare bytes, into which JUCE
// writes a full-length short label's terminating zero; the clean-room header ends them at the short label.
typedef struct
{
    char label[64];
    int flags;
    int arrangementType;
    char shortLabel[8];
    char future[48];
} VstPinPropertiesWithRoom;

#define VstPinProperties VstPinPropertiesWithRoom

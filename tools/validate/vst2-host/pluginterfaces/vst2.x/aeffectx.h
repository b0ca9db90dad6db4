#pragma once

// JUCE's host code sizes a speaker arrangement as the original interface declared it, with room for eight
// speakers in the structure itself; Debian's clean-room header declares an open array instead, so the host
// would write the speakers of a stereo arrangement past the end of what it allocates. Hosting code sees the
// same layout here, with the room for eight speakers it counts on.
#include_next <pluginterfaces/vst2.x/aeffectx.h>

typedef struct
{
    int type;
    int numChannels;
    VstSpeakerProperties speakers[8];
} VstSpeakerArrangementWithRoom;

#define VstSpeakerArrangement VstSpeakerArrangementWithRoom

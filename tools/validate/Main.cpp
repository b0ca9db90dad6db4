#include "ValidatorApplication.h"

START_JUCE_APPLICATION (ValidatorApplication)

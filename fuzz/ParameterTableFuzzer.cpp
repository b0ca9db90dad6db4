// The parameter table reader given a foreign document in place of the embedded one.
#include "FuzzHost.h"

#include "parameters/ParameterManager.h"

#include <cmath>
#include <set>

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    FuzzHost::get();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    ParameterManager manager;
    manager.loadFromResource ("parameters.xml");
    const int embedded = manager.getNumParameters();

    const auto xml = XmlText::parse (data, size);
    if (xml == nullptr)
    {
        // The resource path: a text that doesn't parse keeps the table.
        FuzzHost::expect (manager.getNumParameters() == embedded,
                          "a document that doesn't parse changed the table");
        return 0;
    }
    manager.loadFromXml (*xml);

    // Whatever the rows said, each parameter is found by its number and its name, holds a value in 0 to
    // 1, and turns any value and any text into a value in 0 to 1.
    std::set<int> found;
    for (auto* row : xml->getChildWithTagNameIterator ("param"))
    {
        auto* parameter = manager.getParameter (row->getIntAttribute ("index", -1));
        if (parameter == nullptr)
            continue;
        found.insert (parameter->getIndex());
        FuzzHost::expect (parameter->getName().isNotEmpty(), "a parameter without a name got in");
        FuzzHost::expect (manager.getParameterByName (parameter->getName()) == parameter,
                          "a parameter is not found by its name");
        const int index = parameter->getIndex();
        for (float value : { 0.0f, 0.37f, 1.0f, -3.0f, 7.0f, std::nanf ("") })
        {
            manager.setNormalizedValue (index, value);
            const float held = manager.getNormalizedValue (index);
            FuzzHost::expect (held >= 0.0f && held <= 1.0f, "a parameter holds a value outside 0 to 1");
            manager.setStringValue (index, manager.getStringValue (index));
        }
        manager.setStringValue (index, row->getStringAttribute ("name"));
        const float held = manager.getNormalizedValue (index);
        FuzzHost::expect (held >= 0.0f && held <= 1.0f, "text gave a value outside 0 to 1");
    }
    FuzzHost::expect ((int) found.size() <= manager.getNumParameters(),
                      "the table counts fewer parameters than it finds");
    return 0;
}

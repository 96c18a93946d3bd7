#pragma once

/// What the desk asks of the platform that it runs on.
namespace Platform {

/// To be called before the application object is made. A limit on the size of files no longer ends the
/// process. The factors of screens are taken as they are, a quarter more is a quarter more. Without a display
/// the platform plugin that needs none is chosen, so that pictures are drawn all the same.
void prepare(int argc, char** argv);

/// To be called once the application object is there: text of a usual size where no desktop says which,
/// curves that go through their samples, and light colours, under a dark desktop, too.
void setUp();

/// Whether prepare() had to do without a display: a window would never be seen.
bool isInvisible();

}

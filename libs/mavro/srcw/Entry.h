#pragma once

namespace mavro {

// Sets the toolkit up, fills the application object from the command line, calls Application::Main
// and returns its result. The toolkit itself sees only the program's name.
int RunApplication(int argc, char** argv);

}  // namespace mavro

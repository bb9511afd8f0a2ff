int WINAPI WinMain(HINSTANCE a, int b) { return 0; }
BOOL CALLBACK Proc(HWND h);
__declspec(dllexport) int f();

/// Links every object file of the engine and the model; nothing in them may ask for a library beyond the standard one.
int main() { return 0; }

// Linked with the calls of AVXSymbols.cpp: when it starts, the loader has found all that they need.
int main()
{
    return 0;
}

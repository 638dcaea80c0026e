// The OBJ reader, which is a header that is compiled once.
#include <tiny_obj_loader.h>

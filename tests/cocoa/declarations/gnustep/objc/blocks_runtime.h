// GNUstep's headers ask for the blocks runtime under this name.
#include <Block.h>

#include "app/Avvio.h"

int main(int argc, char **argv)
{
    return Avvio::Main(argc, argv);
}

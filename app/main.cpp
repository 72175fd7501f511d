#include "app/ui/Startup.h"

int main(int argc, char** argv)
{
    return velmora::ui::runVelmora(argc, argv);
}

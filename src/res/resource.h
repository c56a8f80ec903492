/* Every identifier of the program's resources and controls, grouped by window. The numbers are given. */
#ifndef RES_RESOURCE_H
#define RES_RESOURCE_H

#endif

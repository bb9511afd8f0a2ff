#define A
 # define B 1
#	define C(x) (x)
#define D \
  int inside;
#undef E
#pragma weak f
#pragma once
#pragma weak
/* c */ #define G
int x; #define no
??=define H
#define 1

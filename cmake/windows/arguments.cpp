// Read by the start-up code, which would otherwise take an argument with an asterisk, as formulas have, for a
// pattern and put in the names of the files that fit.
extern "C" {
extern int _dowildcard;
int _dowildcard = 0;
}

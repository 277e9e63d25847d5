# What Doxygen reads of a page: it finds files by the ends of their paths. Sources of programs are no part of the
# site.
s@\]\((\.\./)*(docs/)?images/@](images/@g
s@\]\((\.\./)+([a-z]+/README\.md)@](\2@g
s@\[([A-Za-z]+\.h)\]\((\.\./)*include/[A-Za-z]+\.h\)@\1@g
s@\[([^]]*)\]\([^)]*\.cpp\)@\1@g
s@\[([^]]*)\]\(host/[^)]*\)@\1@g
s@\[([^]]*)\]\((\.\./)*docs/man\)@\1@g

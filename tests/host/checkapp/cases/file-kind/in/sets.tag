[DEFINITION SECTION]
<Display Set>
1 set
<Definition>
FIND Level 1

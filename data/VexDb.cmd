; Names of the commands. A line is a command number and the names that run it, in any case, and
; ends with a semicolon: a line without one defines nothing. Of two lines with the same name the
; first one counts, so a name may be added but not taken over.
;
; Numbers from 100 draw and edit, those from 1000 are variants of one command, those from 2000 are
; of the program itself.

; drawing
101 LINE L ;
102 ARC A ;
1002 ARCCONTINUE AC ; tangentially on from the last line or arc
1003 ARCPOINTS A3 ;
1004 ARCCENTER ACE ;
1005 ARCRADIUS ACR ;
103 CIRCLE C ;
104 ELLIPSE EL ;
105 ELLIPSEARC EA ;
106 POLYLINE PL ;
107 ARCPOLYLINE APL ;
108 POLYGON PG ;
109 STAR ST ;
110 SPIRAL SR ;
111 SPLINE S ;
112 CUBICSPLINE CS ;
113 COBWEB CW ;
115 HATCH H ;
116 TEXT T ;
117 RECTANGLE RECT RE ;
118 BOX B ;

; dimensions; DIM makes an aligned one
119 DIM D ;
1101 DIMLEADER DL ;
1102 DIMALIGNED DA ;
1103 DIMHORIZONTAL DH ;
1104 DIMVERTICAL DV ;
1105 DIMRADIUS DR ;
1106 DIMDIAMETER DD ;
1107 DIMANGLE3 D3 ;
1108 DIMANGLE2 D2 ;
1109 DIMLEADERUP DLU ;
1110 DIMLEADERSIDE DLS ;

; editing
124 ERASE E ;
125 ARRAY AR ;
126 COPY CO ;
127 COPYROTATE CR ;
128 MIRROR MI ;
129 ROTATE RO ;
130 SCALE SC ;
131 MOVE M ;
132 EXPLODE X ;
133 EXTEND EX ;
134 TRIM TR ;
136 POLYLINEEDIT PE ;
2005 OFFSET OF ;
2006 FILL FI ;
2001 UNDO U ;
2002 REDO ;
2003 SELECTALL SA ;
2004 UNSELECT US ;

; the view
2010 ZOOMEXTENTS ZE ;
2011 ZOOMALL ZA ;
2012 ZOOMIN ZI ;
2013 ZOOMOUT ZO ;
2014 ZOOMPREVIOUS ZP ;
2015 ZOOMWINDOW ZW Z ;
2016 PAN P ;
2017 REDRAW R ;

; settings, each on and off
2020 GRID G ;
2021 GRIDSNAP SNAP ;
2022 ORTHO O ;
2023 GRIPSNAP GS ;

; the program
2030 NEW ;
2031 OPEN ;
2032 SAVE ;
2033 SAVEAS ;
2034 QUIT EXIT ;

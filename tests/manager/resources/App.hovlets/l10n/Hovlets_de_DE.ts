<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>pen</name>
    <message><source>Pen</source><translation>Stift</translation></message>
</context>
</TS>

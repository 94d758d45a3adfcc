import gi,sys,time
gi.require_version('Atspi','2.0')
from gi.repository import Atspi
title=sys.argv[1]
desk=Atspi.get_desktop(0)
def find():
    for i in range(desk.get_child_count()):
        app=desk.get_child_at_index(i)
        if app and True or app.get_name()=='qml':
            for j in range(app.get_child_count()):
                w=app.get_child_at_index(j)
                if w and w.get_name()==title: return w
for _ in range(30):
    w=find()
    if w: break
    time.sleep(.3)
def dump(a,d=0):
    try:
        ss=a.get_state_set(); st=[s for s,v in (('F',Atspi.StateType.FOCUSABLE),('f',Atspi.StateType.FOCUSED),('c',Atspi.StateType.CHECKED),('s',Atspi.StateType.SELECTED),('h',Atspi.StateType.SHOWING),('e',Atspi.StateType.ENABLED)) if ss.contains(v)]
        acts=[]
        try: acts=[a.get_action_name(i) for i in range(a.get_n_actions())]
        except Exception: pass
        print('  '*d+a.get_role_name()+' | '+repr(a.get_name())+(' | '+a.get_description() if a.get_description() else ''),''.join(st),acts)
        for i in range(a.get_child_count()):
            c=a.get_child_at_index(i)
            if c: dump(c,d+1)
    except Exception as e: print('!!',e)
dump(w)
